#include "views/prompter/PlayingWait.h"

#include "views/widgets/WaitCursor.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QTimer>
#include <QWidget>
#include <QWindow>

namespace velmor {

namespace {

constexpr int pollMilliseconds = 15;

/// Takes what is left of a key that is still down: its repetitions and its release. Owned by the application, and
/// gone with the release.
class CKeyRest final : public QObject {
public:
    explicit CKeyRest(int key) : QObject(qApp), m_key(key) { qApp->installEventFilter(this); }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (m_isOver)
            return false;
        // A release that another program got is not waited for.
        if (event->type() == QEvent::ApplicationStateChange)
            End();
        const bool isPress = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
        if (!isPress && event->type() != QEvent::KeyRelease)
            return false;
        const auto& key = static_cast<const QKeyEvent&>(*event);
        if (key.key() != m_key)
            return false;
        if (!key.isAutoRepeat())
            End();
        // A press that is no repetition is a new one: this one's release went elsewhere.
        if (isPress && !key.isAutoRepeat())
            return false;
        event->accept();
        return true;
    }

private:
    void End() {
        m_isOver = true;
        deleteLater();
    }

    int m_key;
    bool m_isOver = false;
};

bool IsFromMouse(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::DragEnter:
    case QEvent::Drop:
        return true;
    default:
        return false;
    }
}

/// Not a tooltip or a menu, which come and go by themselves.
bool IsRealWindow(QObject* object) {
    Qt::WindowType type = Qt::Widget;
    if (const auto* widget = qobject_cast<QWidget*>(object))
        type = widget->windowType();
    else if (const auto* window = qobject_cast<QWindow*>(object))
        type = window->type();
    return type == Qt::Window || type == Qt::Dialog;
}

} // namespace

CPlayingWait::CPlayingWait(std::function<bool()> isPlaying) : m_isPlaying(std::move(isPlaying)) {}

void CPlayingWait::Run() {
    if (!m_isPlaying())
        return;
    QTimer poll;
    connect(&poll, &QTimer::timeout, this, [this] {
        if (!m_isPlaying())
            m_loop.quit();
    });
    poll.start(pollMilliseconds);
    const CWaitCursor cursor;
    qApp->installEventFilter(this);
    m_loop.exec();
    qApp->removeEventFilter(this);
}

bool CPlayingWait::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type == QEvent::ShortcutOverride) {
        event->accept(); // the key is to come as a key
        return true;
    }
    if (type == QEvent::KeyPress) {
        if (m_loop.isRunning())
            new CKeyRest(static_cast<const QKeyEvent*>(event)->key());
        m_loop.quit();
        return true;
    }
    if (type == QEvent::Close && IsRealWindow(watched)) {
        event->ignore();
        CloseLater(watched);
        m_loop.quit();
        return true;
    }
    return IsFromMouse(type);
}

void CPlayingWait::CloseLater(QObject* window) {
    // Whoever waits here is in the middle of something: first it ends, then the window goes.
    QTimer::singleShot(0, window, [window] {
        if (auto* widget = qobject_cast<QWidget*>(window))
            widget->close();
        else if (auto* handle = qobject_cast<QWindow*>(window))
            handle->close();
    });
}

} // namespace velmor
