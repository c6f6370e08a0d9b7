#include "views/WheelTurn.h"

#include <QGuiApplication>
#include <QWheelEvent>

#include <algorithm>

namespace velmor {

namespace {

constexpr int notch = 120; ///< eighths of a degree
constexpr double pixelsPerNotch = 48;
constexpr CZoomLevel least{-14};
constexpr CZoomLevel most{64};

// An X server's drivers count pixels each in their own way.
bool CountsPixels(const QWheelEvent& event) {
    return !event.pixelDelta().isNull() && QGuiApplication::platformName() != "xcb";
}

} // namespace

CPoint CWheelTurn::PixelsOf(const QWheelEvent& event) {
    const QPointF turn =
        CountsPixels(event) ? QPointF(event.pixelDelta()) : QPointF(event.angleDelta()) * (pixelsPerNotch / notch);
    m_pixels += event.modifiers().testFlag(Qt::ShiftModifier) ? turn.transposed() : turn;
    const CPoint whole{static_cast<int>(m_pixels.x()), static_cast<int>(m_pixels.y())};
    m_pixels -= QPointF(whole.x, whole.y);
    return whole;
}

CZoomLevel CWheelTurn::ZoomAfter(const QWheelEvent& event, CZoomLevel zoom) {
    m_angle += event.angleDelta().y();
    const int steps = m_angle / notch;
    m_angle -= steps * notch;
    return CZoomLevel(std::clamp(zoom.Level() + steps, std::min(least.Level(), zoom.Level()),
                                 std::max(most.Level(), zoom.Level())));
}

} // namespace velmor
