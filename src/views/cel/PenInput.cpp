#include "views/cel/PenInput.h"

#include <QMouseEvent>
#include <QPointingDevice>
#include <QTabletEvent>

#include <algorithm>

namespace velmor {

namespace {

// A pen whose lifting was lost must not keep the mouse away for good.
constexpr std::uint64_t longestEcho = 1000; // ms

QEvent::Type MouseTypeOf(QEvent::Type type) {
    switch (type) {
    case QEvent::TabletPress:
        return QEvent::MouseButtonPress;
    case QEvent::TabletRelease:
        return QEvent::MouseButtonRelease;
    default:
        return QEvent::MouseMove;
    }
}

bool IsPen(const QPointerEvent& event) {
    const auto type = event.pointingDevice()->pointerType();
    return type == QPointingDevice::PointerType::Pen || type == QPointingDevice::PointerType::Eraser;
}

CHandPoint PenOf(const QTabletEvent& event) {
    CHandPoint pen;
    pen.isPen = true;
    pen.isEraserEnd = event.pointerType() == QPointingDevice::PointerType::Eraser;
    pen.hasPressure = event.pointingDevice()->hasCapability(QInputDevice::Capability::Pressure);
    pen.pressure = pen.hasPressure ? std::clamp(event.pressure(), 0.0, 1.0) : 1;
    pen.tiltX = event.xTilt();
    pen.tiltY = event.yTilt();
    return pen;
}

} // namespace

bool CPenInput::Handle(QTabletEvent& event, const std::function<void(QMouseEvent&)>& handle) {
    m_isDown = event.buttons() != Qt::NoButton;
    m_time = event.timestamp();
    const CHandPoint pen = PenOf(event);
    m_isEraserNear = pen.isEraserEnd;
    if (event.type() == QEvent::TabletMove && !m_isDown) {
        event.ignore();
        return false;
    }
    event.accept();
    QMouseEvent mouse(MouseTypeOf(event.type()), event.position(), event.globalPosition(), event.button(),
                      event.buttons(), event.modifiers(), event.pointingDevice());
    mouse.setTimestamp(event.timestamp());
    m_pen = pen;
    handle(mouse);
    m_pen.reset();
    return true;
}

bool CPenInput::IsEcho(const QMouseEvent& event) const {
    if (m_pen)
        return false;
    if (m_isDown && event.timestamp() < m_time + longestEcho)
        return true;
    return event.type() != QEvent::MouseMove && IsPen(event);
}

void CPenInput::AddTo(CHandPoint& point) const {
    if (!m_pen)
        return;
    point.isPen = true;
    point.isEraserEnd = m_pen->isEraserEnd;
    point.hasPressure = m_pen->hasPressure;
    point.pressure = m_pen->pressure;
    point.tiltX = m_pen->tiltX;
    point.tiltY = m_pen->tiltY;
}

} // namespace velmor
