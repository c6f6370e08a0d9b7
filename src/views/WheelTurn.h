#pragma once

#include "image/Geometry.h"
#include "views/ZoomLevel.h"

#include <QPointF>

class QWheelEvent;

namespace velmor {

/// What the turns of a mouse wheel, or two fingers on a pad, scroll and zoom. A wheel that turns finely tells less
/// than a pixel or a step at a time; what is not whole yet waits for the next turn.
class CWheelTurn {
public:
    /// How far the contents move, in pixels, y down. As far as the device says, where it speaks in pixels. With
    /// Shift a turn moves sideways.
    CPoint PixelsOf(const QWheelEvent& event);
    /// The zoom after a turn: a level a notch. The wheel is easily turned too far, so that it zooms within bounds;
    /// a zoom beyond them, which commands can reach, it only brings back.
    CZoomLevel ZoomAfter(const QWheelEvent& event, CZoomLevel zoom);

private:
    QPointF m_pixels;
    int m_angle = 0; ///< eighths of a degree
};

} // namespace velmor
