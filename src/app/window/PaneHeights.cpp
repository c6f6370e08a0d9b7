#include "app/window/PaneHeights.h"

#include <algorithm>

namespace velmor {

PaneHeights SharedHeights(const PaneHeights& ideal, int total) {
    const int xsheet = ideal[1] > leastPane ? ideal[1] : greedyPane;
    return {total / 2, xsheet, collapsedPane};
}

PaneHeights OpenedHeights(const PaneHeights& ideal, StackedPane pane, int total) {
    PaneHeights heights = ideal;
    int& opened = heights[static_cast<std::size_t>(pane)];
    opened = collapsedPane;
    const auto isOpen = [](int height) { return height > leastPane; };
    const auto others = std::max(1, static_cast<int>(std::ranges::count_if(heights, isOpen)));
    std::ranges::replace_if(heights, isOpen, std::max(total / 2 / others, leastPane + 1));
    opened = std::max(total / 2, leastPane + 1);
    return heights;
}

PaneHeights DividePanes(const PaneHeights& ideal, int total) {
    PaneHeights heights{};
    int left = total - leastPane * static_cast<int>(heights.size());
    std::size_t lowestOpen = 0;
    for (std::size_t pane = 0; pane < heights.size(); ++pane) {
        const int wanted = std::clamp(ideal[pane] - leastPane, 0, std::max(left, 0));
        heights[pane] = leastPane + wanted;
        left -= wanted;
        if (ideal[pane] > leastPane)
            lowestOpen = pane;
    }
    heights[lowestOpen] += std::max(left, 0);
    return heights;
}

} // namespace velmor
