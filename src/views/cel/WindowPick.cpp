#include "views/cel/WindowPick.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPixmap>
#include <QWidget>

#include <utility>

namespace velmor {

void CWindowPick::Toggle() {
    if (m_isOn) {
        Stop();
        return;
    }
    m_isOn = true;
    qApp->installEventFilter(this);
    QApplication::setOverrideCursor(Qt::CrossCursor);
}

void CWindowPick::Stop() {
    if (!std::exchange(m_isOn, false))
        return;
    qApp->removeEventFilter(this);
    QApplication::restoreOverrideCursor();
}

void CWindowPick::TakeAt(const QPoint& screenPoint) {
    QWidget* const under = QApplication::widgetAt(screenPoint);
    if (under == nullptr)
        return;
    QWidget* const window = under->window();
    const QColor color =
        window->grab(QRect(window->mapFromGlobal(screenPoint), QSize(1, 1))).toImage().pixelColor(0, 0);
    const auto byte = [](int value) { return static_cast<std::uint8_t>(value); };
    m_take(MakeColorRef(byte(color.red()), byte(color.green()), byte(color.blue())));
}

bool CWindowPick::eventFilter(QObject* watched, QEvent* event) {
    if (!watched->isWidgetType())
        return false; // windows pass on to their widgets what they hear
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::ContextMenu:
        return true;
    case QEvent::MouseButtonRelease: {
        const auto& mouse = *static_cast<QMouseEvent*>(event);
        Stop();
        if (mouse.button() == Qt::LeftButton)
            TakeAt(mouse.globalPosition().toPoint());
        return true;
    }
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
        if (static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape)
            return false;
        event->accept();
        if (event->type() == QEvent::KeyPress)
            Stop();
        return true;
    default:
        return false;
    }
}

} // namespace velmor
