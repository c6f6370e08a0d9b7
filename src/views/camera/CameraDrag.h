#pragma once

#include "image/Geometry.h"
#include "views/ZoomLevel.h"

namespace velmor {

/// Turns a drag over the zoomed picture into camera input. Each motion is measured from where the drag began, so
/// that no fraction of a pixel is lost when the picture is enlarged, and none counts twice when it is reduced.
class CCameraDrag {
public:
    /// `start` in the scaled picture, y down. `turn` is the angle in radians that camera input turns a motion by,
    /// cutting it off to whole pixels: the camera's rotation while moving, else 0.
    CCameraDrag(CPoint start, CZoomLevel zoom, double turn) : m_start(start), m_zoom(zoom), m_turn(turn) {}

    double Turn() const { return m_turn; }
    /// The motion in frame pixels, y up, that brings what is dragged to `point`; what earlier calls returned has
    /// been passed on. Under a turned camera this makes up for what cutting off has lost so far, or a slow drag
    /// would not move anything.
    CPoint MotionTo(CPoint point);

private:
    CPoint m_start;
    CZoomLevel m_zoom;
    double m_turn;
    CPoint m_arrived; ///< turned motion that has been applied
};

} // namespace velmor
