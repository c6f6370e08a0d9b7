#include "platform/scanner/SaneOption.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <limits>
#include <span>

namespace velmor {

namespace {

constexpr int mostListed = 1000;

std::span<const SANE_Word> ListOf(const SANE_Option_Descriptor& option) {
    const SANE_Word* list =
        option.constraint_type == SANE_CONSTRAINT_WORD_LIST ? option.constraint.word_list : nullptr;
    if (list == nullptr || list[0] <= 0 || list[0] > mostListed)
        return {};
    return {list + 1, static_cast<std::size_t>(list[0])};
}

const SANE_Range* LimitsOf(const SANE_Option_Descriptor& option) {
    const SANE_Range* range = option.constraint_type == SANE_CONSTRAINT_RANGE ? option.constraint.range : nullptr;
    return range != nullptr && range->min <= range->max ? range : nullptr;
}

std::string Lowered(std::string text) {
    std::ranges::transform(text, text.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

} // namespace

bool IsNumber(const SANE_Option_Descriptor& option) {
    return (option.type == SANE_TYPE_INT || option.type == SANE_TYPE_FIXED) &&
           option.size == static_cast<SANE_Int>(sizeof(SANE_Word));
}

double FromWord(const SANE_Option_Descriptor& option, SANE_Word word) {
    return option.type == SANE_TYPE_FIXED ? SANE_UNFIX(word) : word;
}

SANE_Word ToWord(const SANE_Option_Descriptor& option, double value) {
    const double scaled = option.type == SANE_TYPE_FIXED ? value * (1 << SANE_FIXED_SCALE_SHIFT) : value;
    constexpr double most = std::numeric_limits<SANE_Word>::max();
    return static_cast<SANE_Word>(std::lround(std::clamp(scaled, -most, most)));
}

CNumberRange RangeOf(const SANE_Option_Descriptor& option) {
    if (const SANE_Range* limits = LimitsOf(option))
        return {FromWord(option, limits->min), FromWord(option, limits->max)};
    const std::span<const SANE_Word> list = ListOf(option);
    if (list.empty())
        return {};
    const auto [least, most] = std::ranges::minmax(list);
    return {FromWord(option, least), FromWord(option, most)};
}

double NearestValue(const SANE_Option_Descriptor& option, double value) {
    if (const SANE_Range* limits = LimitsOf(option)) {
        const double least = FromWord(option, limits->min);
        const double step = FromWord(option, limits->quant);
        const double stepped = step > 0 ? least + std::round((value - least) / step) * step : value;
        return std::clamp(stepped, least, FromWord(option, limits->max));
    }
    const std::span<const SANE_Word> list = ListOf(option);
    if (list.empty())
        return value;
    return FromWord(option, std::ranges::min(list, {}, [&](SANE_Word word) {
                        return std::abs(FromWord(option, word) - value);
                    }));
}

std::vector<int> ResolutionsOf(const SANE_Option_Descriptor& option) {
    std::vector<int> values;
    for (const SANE_Word word : ListOf(option))
        if (const long value = std::lround(FromWord(option, word)); value > 0)
            values.push_back(static_cast<int>(value));
    std::ranges::sort(values);
    return values;
}

std::vector<std::string> TextsOf(const SANE_Option_Descriptor& option) {
    std::vector<std::string> texts;
    if (option.type != SANE_TYPE_STRING || option.constraint_type != SANE_CONSTRAINT_STRING_LIST ||
        option.constraint.string_list == nullptr)
        return texts;
    for (const SANE_String_Const* text = option.constraint.string_list; *text != nullptr; ++text)
        texts.emplace_back(*text);
    return texts;
}

std::optional<std::string> FirstWith(const std::vector<std::string>& texts, const std::vector<std::string>& words) {
    for (const bool exactly : {true, false})
        for (const std::string& word : words)
            for (const std::string& text : texts)
                if (exactly ? Lowered(text) == word : Lowered(text).find(word) != std::string::npos)
                    return text;
    return std::nullopt;
}

} // namespace velmor
