#include "app/cli/NumberList.h"

#include <algorithm>
#include <charconv>
#include <set>

namespace velmor {

namespace {

std::optional<CNumberRange> ParseRange(std::string_view text) {
    const std::size_t dash = text.find('-');
    const std::optional<int> first = ParseNumber(text.substr(0, dash));
    const std::optional<int> last = dash == std::string_view::npos ? first : ParseNumber(text.substr(dash + 1));
    if (!first || !last || *last < *first)
        return std::nullopt;
    return CNumberRange{*first, *last};
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
        for (int number = range.first; number <= std::min(range.last, count); ++number)
            indices.insert(number - 1);
    return {indices.begin(), indices.end()};
}

} // namespace velmor
