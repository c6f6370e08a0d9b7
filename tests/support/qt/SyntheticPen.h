#pragma once

#include <QApplication>
#include <QPointingDevice>
#include <QTabletEvent>
#include <QWidget>

namespace velmor::testing {

/// The pen of a tablet that is not there, on a widget.
class CSyntheticPen {
public:
    explicit CSyntheticPen(QWidget& widget, bool isEraserEnd = false, bool feelsPressure = true)
        : m_widget(widget),
          m_device("pen", isEraserEnd ? 7002 : 7001, QInputDevice::DeviceType::Stylus,
                   isEraserEnd ? QPointingDevice::PointerType::Eraser : QPointingDevice::PointerType::Pen,
                   feelsPressure ? QInputDevice::Capability::Position | QInputDevice::Capability::Pressure |
                                       QInputDevice::Capability::XTilt | QInputDevice::Capability::YTilt
                                 : QInputDevice::Capabilities(QInputDevice::Capability::Position),
                   1, 3) {}

    const QPointingDevice& Device() const { return m_device; }

    bool Press(QPointF at, double pressure = 0.5, Qt::MouseButton button = Qt::LeftButton,
               Qt::KeyboardModifiers modifiers = {}) {
        m_buttons |= button;
        return Send(QEvent::TabletPress, at, pressure, button, modifiers);
    }
    bool Move(QPointF to, double pressure = 0.5, Qt::KeyboardModifiers modifiers = {}) {
        return Send(QEvent::TabletMove, to, pressure, Qt::NoButton, modifiers);
    }
    bool Release(QPointF at, Qt::MouseButton button = Qt::LeftButton, Qt::KeyboardModifiers modifiers = {}) {
        m_buttons &= ~Qt::MouseButtons(button);
        return Send(QEvent::TabletRelease, at, 0, button, modifiers);
    }

private:
    // Whether the event was accepted.
    bool Send(QEvent::Type type, QPointF at, double pressure, Qt::MouseButton button,
              Qt::KeyboardModifiers modifiers) {
        QTabletEvent event(type, &m_device, at, m_widget.mapToGlobal(at), pressure, 12, -7, 0, 0, 0, modifiers,
                           button, m_buttons);
        QApplication::sendEvent(&m_widget, &event);
        return event.isAccepted();
    }

    QWidget& m_widget;
    QPointingDevice m_device;
    Qt::MouseButtons m_buttons;
};

} // namespace velmor::testing
