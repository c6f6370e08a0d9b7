#pragma once

#include "platform/Progress.h"
#include "views/widgets/WaitCursor.h"

#include <QDialog>
#include <QElapsedTimer>
#include <optional>

class QLabel;
class QProgressBar;

namespace velmor {

/// The window of long work: a text, a bar, the time left, and the button "STOP". Closing it asks to stop as well;
/// only its owner makes it go.
class CProgressDialog final : public QDialog {
public:
    CProgressDialog(QWidget* parent, const QString& title);

    void SetState(int percent, const QString& text, const QString& timeLeft);
    /// True when "STOP" was pressed since the last call.
    bool TakeStopRequest();

    void reject() override { m_stopRequested = true; }

private:
    QLabel* m_text;
    QProgressBar* m_bar;
    QLabel* m_timeLeft;
    bool m_stopRequested = false;
};

/// Serves work on the window's own thread: its reports keep the window alive. A progress dialog appears when the
/// work turns out to be longer than a moment and blocks the other windows; until then there is a wait cursor.
class CWindowProgress final : public IProgress {
public:
    CWindowProgress(QWidget* parent, const QString& title);

    void Report(int percent, const std::string& text) override;
    bool TakeStopRequest() override;

private:
    void HandleEvents();

    CProgressDialog m_dialog;
    std::optional<CWaitCursor> m_wait;  ///< until the dialog is shown
    std::optional<CWaitPause> m_noWait; ///< from then on
    QElapsedTimer m_clock;
    qint64 m_lastShown = 0;
    qint64 m_askedAt = -1; ///< when a stop request was handed out; the user is being asked, the work rests
    qint64 m_rested = 0;
    bool m_handlingEvents = false;
};

} // namespace velmor
