#pragma once

#include "image/stroke/StrokePoint.h"

#include <vector>

namespace velmor {

/// A curve without corners through points that come one after the other: a centripetal Catmull-Rom spline, which
/// makes no loops of its own however unevenly the points lie. The curve to a point is known once the next one is
/// there.
class CSmoothWay {
public:
    /// What of the curve is known now, in pieces of at most about a unit; begins behind what was returned before. A
    /// point on the same spot as the one before counts for its pressure alone, when that is higher.
    std::vector<CStrokePoint> Move(const CStrokePoint& to);
    /// The rest, up to the last point.
    std::vector<CStrokePoint> End();

private:
    std::vector<CStrokePoint> m_points; ///< the last three; the curve from the last but one on is not known yet
};

} // namespace velmor
