#pragma once

#include "image/RealPoint.h"

namespace velmor {

/// What a pressure counts for: a Bezier curve from (0, 0) to (1, 1) with a handle for each end. A curve that sags
/// is for a heavy hand, one that bulges for a light one; as it is made every pressure counts for itself.
struct CPressureCurve {
    // Both from 0 to 1, so that there is one value for each pressure; others count as the nearest of these.
    CRealPoint first{1.0 / 3, 1.0 / 3};
    CRealPoint second{2.0 / 3, 2.0 / 3};

    /// 0 to 1 for a pressure from 0 to 1; one beyond counts as the nearest of these.
    double Of(double pressure) const;

    bool operator==(const CPressureCurve&) const = default;
};

} // namespace velmor
