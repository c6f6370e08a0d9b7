#pragma once

#include "image/RealPoint.h"

namespace velmor {

/// How a value gets from its first key to its last: a Bezier curve from (0, 0) to (1, 1) with a handle for each
/// end; across lies the time, upwards the part of the way. As it is made it is slow at both ends.
struct CPaceCurve {
    /// How far handles may lie below the first key and above the last, for what swings back or over.
    static constexpr double mostBeyond = 0.5;

    CRealPoint first{1.0 / 3, 0};
    CRealPoint second{2.0 / 3, 1};

    /// The part of the way at a part of the time, which counts as 0 or 1 where it is beyond. 0 and 1 are met
    /// exactly.
    double At(double time) const;
    /// With handles where they may be; those without a number are as they are made.
    CPaceCurve Kept() const;

    bool operator==(const CPaceCurve&) const = default;
};

} // namespace velmor
