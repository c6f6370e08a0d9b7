#include "scene/NamingRules.h"

#include "platform/files/TextEncoding.h"

#include <algorithm>

namespace velmor {

namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

CStatus CheckSpacedName(std::string_view name) {
    if (name.empty())
        return CStatus::Failure("You must enter a valid scene name.");
    if (!IsPlainName(name))
        return CStatus::Failure("The scene name can only consist of letters, digits and spaces");
    return {};
}

} // namespace

bool IsPlainName(std::string_view name) {
    return !name.empty() &&
           std::all_of(name.begin(), name.end(), [](char c) { return IsLetter(c) || IsDigit(c) || c == ' '; });
}

CStatus CheckSceneName(std::string_view name) {
    if (name.size() > longestSceneName)
        return CStatus::Failure("You must enter a valid scene name.");
    return CheckSpacedName(name);
}

CStatus CheckFolderName(std::string_view name) {
    return CheckSpacedName(name);
}

CStatus CheckCelName(std::string_view name) {
    const auto afterDigits = std::find_if_not(name.begin(), name.end(), IsDigit);
    const auto rest = name.end() - afterDigits;
    if (afterDigits == name.begin() || rest > 1 || (rest == 1 && !IsLetter(*afterDigits)))
        return CStatus::Failure("The cel name must be a number and if required a letter");
    return {};
}

std::string StoredCelName(std::string_view name) {
    while (name.size() > 1 && name[0] == '0' && IsDigit(name[1]))
        name.remove_prefix(1);
    return std::string(name);
}

CStatus CheckPictureName(std::string_view name) {
    if (name.empty())
        return CStatus::Failure("");
    if (!std::all_of(name.begin(), name.end(), [](char c) { return IsLetter(c) || IsDigit(c); }))
        return CStatus::Failure(brokenPictureName);
    return {};
}

CStatus CheckSoundName(std::string_view name) {
    return CheckPictureName(name);
}

CStatus CheckFreeText(std::string_view name) {
    if (!IsStorable(name))
        return CStatus::Failure("The name holds characters that can not be stored.\n"
                                "Use Western European letters, digits and signs.");
    return {};
}

} // namespace velmor
