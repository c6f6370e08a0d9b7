#pragma once

#include <optional>
#include <string>
#include <vector>

namespace velmor {

/// Inclusive ranges of numbers that count from 1, as users write them: "1-48,60,100-200".
struct CNumberRange {
    int first = 1;
    int last = 1;
};

/// Nothing for text that is not such a list, a number below 1 or a range that runs backwards.
std::optional<std::vector<CNumberRange>> ParseNumberList(const std::string& text);

/// The numbers of a list as 0-based indices, ascending, each once; what runs past `count` is cut.
std::vector<int> IndicesOf(const std::vector<CNumberRange>& ranges, int count);

} // namespace velmor
