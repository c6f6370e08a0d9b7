#pragma once

#include "image/Geometry.h"
#include "image/stroke/StrokePoint.h"

#include <optional>
#include <vector>

namespace velmor {

/// The pixels of a thin line along points that come one after the other. Each pixel touches the next; where two
/// touch at a corner, the pixel between them that touches both at an edge is left out, so that the line is one
/// pixel thin.
class CPixelWay {
public:
    /// The pixels that are certain now, up to a point.
    std::vector<CPoint> Move(CRealPoint to);
    /// The last one, if it has not been returned yet.
    std::vector<CPoint> End();

private:
    void Add(CPoint pixel, std::vector<CPoint>& pixels);

    std::optional<CRealPoint> m_at;
    std::optional<CPoint> m_done;    ///< the last one returned
    std::optional<CPoint> m_pending; ///< may yet be left out
};

CPoint PixelOf(CRealPoint point);

} // namespace velmor
