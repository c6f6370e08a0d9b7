#pragma once

#include "image/stroke/StrokePoint.h"

#include <deque>
#include <vector>

namespace velmor {

/// How a line is kept from following every tremor of the hand; settings hold the numbers.
enum class StabilizerKind {
    None = 0,
    String =
        1, ///< the pen pulls the line's end on a string: it turns corners late, and stays while the string sags
    Weighted = 2 ///< the line's end is the mean of the way that the pen has just gone, newer parts weighing more
};

/// Where the line's end goes while a pen moves. However the pen has moved, the line begins where it was put down
/// and ends where it is lifted.
class CStabilizer {
public:
    /// `length` of the string, or of the way that is looked back on, in the unit of the points; what is not above 0
    /// stabilizes nothing.
    CStabilizer(StabilizerKind kind, double length);

    /// The points that the line's end goes through when the pen has come somewhere, the first time to where it is
    /// put down. None while the line's end stays.
    std::vector<CStrokePoint> Move(const CStrokePoint& pen);
    /// The rest, up to the pen.
    std::vector<CStrokePoint> Release(const CStrokePoint& pen);

private:
    void Follow(const CStrokePoint& pen, std::vector<CStrokePoint>& line);
    CStrokePoint Mean(double length) const;
    void Forget();

    StabilizerKind m_kind;
    double m_length;
    std::deque<CStrokePoint> m_way; ///< of the pen as far as it counts; pulling a string, where its end is
};

} // namespace velmor
