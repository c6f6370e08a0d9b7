#pragma once

#include "views/cel/CelHand.h"

namespace velmor {

/// Where a line goes through for a hand point, in the client area: a pen is where it says, a mouse in the middle of
/// its pixel.
inline CRealPoint PrecisePoint(const CHandPoint& point) {
    const CPoint pixel = point.Pixel();
    return point.isPen ? point.at : CRealPoint{pixel.x + 0.5, pixel.y + 0.5};
}

} // namespace velmor
