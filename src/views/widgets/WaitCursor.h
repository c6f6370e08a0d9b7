#pragma once

#include <QCursor>
#include <QGuiApplication>
#include <QList>

namespace velmor {

/// The wait cursor over the whole program while the object lives; may be nested.
class CWaitCursor {
public:
    CWaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;
    ~CWaitCursor() { QGuiApplication::restoreOverrideCursor(); }
};

/// Lifts wait cursors while the object lives: a dialog that interrupts work is not to look busy.
class CWaitPause {
public:
    CWaitPause() {
        while (const QCursor* cursor = QGuiApplication::overrideCursor()) {
            m_lifted.prepend(*cursor);
            QGuiApplication::restoreOverrideCursor();
        }
    }
    CWaitPause(const CWaitPause&) = delete;
    CWaitPause& operator=(const CWaitPause&) = delete;
    ~CWaitPause() {
        for (const QCursor& cursor : m_lifted)
            QGuiApplication::setOverrideCursor(cursor);
    }

private:
    QList<QCursor> m_lifted;
};

} // namespace velmor
