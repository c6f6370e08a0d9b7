#include "image/paint/GradientPaint.h"

#include <algorithm>

namespace velmor {

CGradientPaint::CGradientPaint(CCelImg& cel, CPoint start, CColor color1, CPoint end, CColor color2)
    : m_cel(cel),
      m_planes{PlaneColors{cel.PlaneOf(Channel::Red).data(), color1.red, color2.red},
               PlaneColors{cel.PlaneOf(Channel::Green).data(), color1.green, color2.green},
               PlaneColors{cel.PlaneOf(Channel::Blue).data(), color1.blue, color2.blue},
               PlaneColors{cel.PlaneOf(Channel::Alpha).data(), color1.alpha, color2.alpha}},
      m_startX(start.x),
      m_startY(start.y),
      m_backX(m_startX - end.x),
      m_backY(m_startY - end.y),
      m_squaredLength(m_backX * m_backX + m_backY * m_backY),
      m_weights(static_cast<std::size_t>(cel.Width())) {}

void CGradientPaint::operator()(int y, int x, int endX) {
    const double alongRow = m_backY * (m_startY - y);
    const int count = endX - x;
    double* const weights = m_weights.data();
    for (int i = 0; i < count; ++i) {
        const double along = m_backX * (m_startX - (x + i)) + alongRow;
        weights[i] = std::min(std::max(along / m_squaredLength, 0.0), 1.0);
    }
    const std::size_t first = m_cel.IndexOf(x, y);
    for (const PlaneColors& plane : m_planes) {
        std::uint8_t* const bytes = plane.bytes + first;
        const double color1 = plane.color1;
        const double color2 = plane.color2;
        for (int i = 0; i < count; ++i)
            bytes[i] =
                static_cast<std::uint8_t>(static_cast<int>(color1 * weights[i] + color2 * (1.0 - weights[i])));
    }
}

} // namespace velmor
