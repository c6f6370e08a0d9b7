#pragma once

#include "platform/Status.h"

#include <string>
#include <string_view>

namespace velmor {

// What names may be. A refusal carries the text to show, which may be empty (the dialog then just stays open).
// Whether something of that name exists is the caller's question.

inline constexpr std::size_t longestSceneName = 25;
/// What is shown for a broken name of a picture or a sound.
inline constexpr const char* brokenPictureName = "The picture name should only consist of letters and numbers";

/// Letters, digits and spaces only (and at least one character).
bool IsPlainName(std::string_view name);
CStatus CheckSceneName(std::string_view name);
CStatus CheckFolderName(std::string_view name);
/// Digits and at most one letter after them.
CStatus CheckCelName(std::string_view name);
/// The name under which a new cel is stored: one that keeps CheckCelName(), without zeros before its number. "007"
/// and "7" would look the same in every list.
std::string StoredCelName(std::string_view name);
CStatus CheckPictureName(std::string_view name);
CStatus CheckSoundName(std::string_view name);
/// The name of a level or a colour: anything that the files can hold.
CStatus CheckFreeText(std::string_view name);

} // namespace velmor
