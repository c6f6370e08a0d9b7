#include "views/camera/CameraDrag.h"

#include "xsheet/CellGeometry.h"

#include <cmath>

namespace velmor {

CPoint CCameraDrag::MotionTo(CPoint point) {
    const double x = m_zoom.Unscaled(point.x - m_start.x);
    const double y = m_zoom.Unscaled(m_start.y - point.y);
    const double c = std::cos(m_turn);
    const double s = std::sin(m_turn);
    const double openX = x * c - y * s - m_arrived.x;
    const double openY = y * c + x * s - m_arrived.y;
    const CPoint motion{static_cast<int>(std::lround(openX * c + openY * s)),
                        static_cast<int>(std::lround(openY * c - openX * s))};
    const CPoint applied = RotatePoint(motion, m_turn);
    m_arrived = {m_arrived.x + applied.x, m_arrived.y + applied.y};
    return motion;
}

} // namespace velmor
