#pragma once

#include "xsheet/Inbetween.h"
#include "xsheet/PathLine.h"

#include <span>
#include <vector>

namespace velmor {

/// The pace of what moves along a path, one position a frame from key to key.
class CSpacing {
public:
    /// At least three positions; the keys are the first and the last one.
    explicit CSpacing(std::span<const CRealPoint> positions);

    /// The positions when the one of number `tick`, between the keys, is dragged along the path as near to a point
    /// as it can get. The others follow on both sides, closer together where it was dragged to; `alone` leaves
    /// them.
    std::vector<CRealPoint> Dragged(std::size_t tick, CRealPoint to, bool alone) const;

private:
    CPathLine m_path;
    std::vector<double> m_parts; ///< of the path's length, up to each position
    std::vector<CRealPoint> m_positions;
};

/// Positions along a line that was drawn, one for each frame from key to key: at the pace, an even one for
/// Constant, and bent so that it begins at `first` and ends at `last`. At least one point; keys.first < keys.last.
std::vector<CRealPoint> SpreadAlong(std::span<const CRealPoint> drawn, CRealPoint first, CRealPoint last,
                                    CInbetweenKeys keys, CInbetweenPace pace);

} // namespace velmor
