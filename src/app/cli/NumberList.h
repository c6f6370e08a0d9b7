#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velmor {

/// Inclusive ranges of numbers that count from 1, as users write them: "1-48,60,100-200x2", where x2 takes every
/// second number.
struct CNumberRange {
    int first = 1;
    int last = 1;
    int step = 1;

    bool operator==(const CNumberRange&) const = default;
};

/// A number from 1 up; nothing for anything else.
std::optional<int> ParseNumber(std::string_view text);

/// Nothing for text that is not such a list, a number or step below 1 or a range that runs backwards.
std::optional<std::vector<CNumberRange>> ParseNumberList(const std::string& text);

/// The numbers of a list as 0-based indices, ascending, each once; what runs past `count` is cut.
std::vector<int> IndicesOf(const std::vector<CNumberRange>& ranges, int count);

/// Ascending 0-based indices as few ranges, and ranges as they are written.
std::vector<CNumberRange> RangesOf(std::span<const int> indices);
std::string TextOf(std::span<const CNumberRange> ranges);

} // namespace velmor
