#pragma once

#include "platform/files/Files.h"
#include "platform/process/MessageChannel.h"

namespace velmor {

/// Another program of ours that runs beside this one, and the connection to it, which it finds at its standard
/// input.
class CChildProcess {
public:
    CChildProcess() = default;
    CChildProcess(const CChildProcess&) = delete;
    CChildProcess& operator=(const CChildProcess&) = delete;
    ~CChildProcess() { Kill(); }

    [[nodiscard]] bool Start(const Path& program);
    bool IsRunning() const { return m_process > 0; }
    CMessageChannel& Channel() { return m_channel; }
    /// Hangs up and gives it so many milliseconds to end by itself.
    void End(int milliseconds);
    /// Ends it whatever it is doing.
    void Kill();

private:
    int m_process = 0;
    CMessageChannel m_channel;
};

/// To be called by the other program at its start: it ends when the thread that started it does, however that
/// happens.
void EndWithParent();

} // namespace velmor
