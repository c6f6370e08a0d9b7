#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

namespace velmor {

/// Cuts off the fraction. What an int cannot hold becomes the nearest int, what is not a number 0: files may hold
/// any value.
inline int TruncateToInt(double value) {
    constexpr double least = std::numeric_limits<int>::min();
    constexpr double most = std::numeric_limits<int>::max();
    return std::isnan(value) ? 0 : static_cast<int>(std::clamp(value, least, most));
}

} // namespace velmor
