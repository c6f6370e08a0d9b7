#pragma once

#include <QEventLoop>
#include <QObject>
#include <functional>

namespace velmor {

/// Waits for something that plays, under a wait cursor, with the program alive but not listening: the first key
/// ends the wait and does nothing else, the mouse does nothing. Closing a window ends it as well, and the window
/// closes afterwards.
class CPlayingWait final : public QObject {
public:
    explicit CPlayingWait(std::function<bool()> isPlaying);
    /// Returns when `isPlaying` no longer holds, or when the user ends it.
    void Run();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void CloseLater(QObject* window);

    std::function<bool()> m_isPlaying;
    QEventLoop m_loop;
};

} // namespace velmor
