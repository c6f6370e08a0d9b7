#pragma once

#include "image/Geometry.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <utility>

namespace velmor {

/// Calls stamp(x, y) at the points of a line, both ends included, one for each step along its longer axis in
/// increasing order. Two equal points make a line to the next pixel up and to the right. Points that lie further
/// than `reach` outside an image of the given size are left out.
template<class Stamp>
void WalkStroke(CPoint from, CPoint to, CSize size, int reach, Stamp stamp) {
    std::int64_t x0 = from.x, y0 = from.y, x1 = to.x, y1 = to.y;
    if (from == to) {
        ++x1;
        ++y1;
    }
    const bool isSteep = std::abs(y1 - y0) >= std::abs(x1 - x0);
    if (isSteep) {
        std::swap(x0, y0);
        std::swap(x1, y1);
    }
    if (x1 < x0) {
        std::swap(x0, x1);
        std::swap(y0, y1);
    }
    const int majorSize = isSteep ? size.height : size.width;
    const int minorSize = isSteep ? size.width : size.height;
    const float slope = static_cast<float>(y1 - y0) / static_cast<float>(x1 - x0);
    const auto first = std::max<std::int64_t>(x0, -reach);
    const auto last = std::min(x1, static_cast<std::int64_t>(majorSize) + reach);
    for (std::int64_t major = first; major <= last; ++major) {
        const float minor = static_cast<float>(y0) + static_cast<float>(major - x0) * slope;
        if (minor <= static_cast<float>(-reach - 1) ||
            minor >= static_cast<float>(minorSize) + static_cast<float>(reach + 1))
            continue;
        const int along = static_cast<int>(major);
        const int across = static_cast<int>(minor);
        isSteep ? stamp(across, along) : stamp(along, across);
    }
}

} // namespace velmor
