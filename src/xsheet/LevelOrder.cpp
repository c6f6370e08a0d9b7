#include "xsheet/LevelOrder.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace velmor {

std::vector<int> MovedLevels(int levelCount, int first, int last, int before) {
    std::vector<int> order(static_cast<std::size_t>(levelCount));
    std::iota(order.begin(), order.end(), 0);
    if (before < first)
        std::rotate(order.begin() + before, order.begin() + first, order.begin() + last + 1);
    else if (before > last)
        std::rotate(order.begin() + first, order.begin() + last + 1, order.begin() + before);
    return order;
}

} // namespace velmor
