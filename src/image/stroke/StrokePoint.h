#pragma once

#include "image/RealPoint.h"

#include <cmath>

namespace velmor {

/// Where a pen was, and how hard it was pressed.
struct CStrokePoint {
    CRealPoint at;
    double pressure = 1; ///< 0 to 1

    bool operator==(const CStrokePoint&) const = default;
};

inline double Distance(CRealPoint a, CRealPoint b) {
    return std::hypot(b.x - a.x, b.y - a.y);
}

/// A share of the way from one to the other, 0 to 1.
inline CRealPoint Between(CRealPoint a, CRealPoint b, double share) {
    return {a.x + (b.x - a.x) * share, a.y + (b.y - a.y) * share};
}
inline CStrokePoint Between(const CStrokePoint& a, const CStrokePoint& b, double share) {
    return {Between(a.at, b.at, share), a.pressure + (b.pressure - a.pressure) * share};
}

} // namespace velmor
