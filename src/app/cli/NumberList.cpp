#include "app/cli/NumberList.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <set>

namespace velmor {

namespace {

std::optional<CNumberRange> ParseRange(std::string_view text) {
    const std::size_t dash = text.find('-');
    const std::optional<int> first = ParseNumber(text.substr(0, dash));
    if (dash == std::string_view::npos)
        return first ? std::optional(CNumberRange{*first, *first}) : std::nullopt;
    const std::string_view rest = text.substr(dash + 1);
    const std::size_t cross = rest.find('x');
    const std::optional<int> last = ParseNumber(rest.substr(0, cross));
    const std::optional<int> step = cross == std::string_view::npos ? 1 : ParseNumber(rest.substr(cross + 1));
    if (!first || !last || !step || *last < *first)
        return std::nullopt;
    return CNumberRange{*first, *last, *step};
}

} // namespace

std::optional<int> ParseNumber(std::string_view text) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number < 1)
        return std::nullopt;
    return number;
}

std::optional<std::vector<CNumberRange>> ParseNumberList(const std::string& text) {
    std::vector<CNumberRange> ranges;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(',', begin), text.size());
        const std::optional<CNumberRange> range = ParseRange(std::string_view(text).substr(begin, end - begin));
        if (!range)
            return std::nullopt;
        ranges.push_back(*range);
        begin = end + 1;
    }
    return ranges;
}

std::vector<int> IndicesOf(const std::vector<CNumberRange>& ranges, int count) {
    std::set<int> indices;
    for (const CNumberRange& range : ranges)
        for (std::int64_t number = range.first; number <= std::min(range.last, count); number += range.step)
            indices.insert(static_cast<int>(number) - 1);
    return {indices.begin(), indices.end()};
}

std::vector<CNumberRange> RangesOf(std::span<const int> indices) {
    std::vector<CNumberRange> ranges;
    for (std::size_t begin = 0; begin < indices.size();) {
        const int step = begin + 1 < indices.size() ? indices[begin + 1] - indices[begin] : 1;
        std::size_t end = begin + 1;
        while (end < indices.size() && indices[end] - indices[end - 1] == step)
            ++end;
        if (end - begin == 2 && step > 1) // two numbers are shorter than a range with a step
            end = begin + 1;
        ranges.push_back({indices[begin] + 1, indices[end - 1] + 1, end - begin > 1 ? step : 1});
        begin = end;
    }
    return ranges;
}

std::string TextOf(std::span<const CNumberRange> ranges) {
    std::string text;
    for (const CNumberRange& range : ranges) {
        text.append(text.empty() ? "" : ",").append(std::to_string(range.first));
        if (range.last != range.first)
            text.append("-").append(std::to_string(range.last));
        if (range.step != 1)
            text.append("x").append(std::to_string(range.step));
    }
    return text;
}

} // namespace velmor
