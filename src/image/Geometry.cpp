#include "image/Geometry.h"

#include <algorithm>

namespace velmor {

CRect Union(const CRect& a, const CRect& b) {
    if (a.IsEmpty())
        return b.IsEmpty() ? CRect{} : b;
    if (b.IsEmpty())
        return a;
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.endX, b.endX), std::max(a.endY, b.endY)};
}

CRect Intersection(const CRect& a, const CRect& b) {
    const CRect common{std::max(a.x, b.x), std::max(a.y, b.y), std::min(a.endX, b.endX), std::min(a.endY, b.endY)};
    return common.IsEmpty() ? CRect{} : common;
}

} // namespace velmor
