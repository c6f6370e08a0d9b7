#include "xsheet/exposing/DrawingNames.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace velmor {

namespace {

constexpr int noMatch = 4;

std::string_view EndNumber(std::string_view name) {
    const std::size_t last = name.find_last_not_of("0123456789");
    return last == std::string_view::npos ? name : name.substr(last + 1);
}

std::string_view WithoutZeros(std::string_view number) {
    const std::size_t first = number.find_first_not_of('0');
    return first == std::string_view::npos ? number.substr(number.size() - std::min<std::size_t>(1, number.size()))
                                           : number.substr(first);
}

int RankOf(std::string_view name, std::string_view typed) {
    const std::string_view number = EndNumber(name);
    if (name == typed)
        return 0;
    if (!number.empty() && WithoutZeros(number) == WithoutZeros(typed))
        return 1;
    if (name.starts_with(typed))
        return 2;
    return number.starts_with(typed) || WithoutZeros(number).starts_with(typed) ? 3 : noMatch;
}

} // namespace

std::vector<std::string> DrawingsNamed(std::span<const std::string> names, std::string_view typed) {
    std::vector<std::string> found;
    if (typed.empty())
        return found;
    std::ranges::copy_if(names, std::back_inserter(found),
                         [&](const std::string& name) { return RankOf(name, typed) < noMatch; });
    std::ranges::stable_sort(found, {},
                             [&](const std::string& name) { return std::pair(RankOf(name, typed), name.size()); });
    return found;
}

} // namespace velmor
