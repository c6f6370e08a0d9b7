#include "platform/process/ChildProcess.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <spawn.h>
#include <string>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace velmor {

namespace {

constexpr int pollMilliseconds = 5;

} // namespace

bool CChildProcess::Start(const Path& program) {
    Kill();
    int ends[2] = {-1, -1};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        return false;
    m_channel = CMessageChannel(ends[0]);
    CMessageChannel theirs(ends[1]);
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, ends[1], STDIN_FILENO);
    std::string name = program.string();
    char* arguments[] = {name.data(), nullptr};
    pid_t process = 0;
    const bool started = ::posix_spawn(&process, name.c_str(), &actions, nullptr, arguments, ::environ) == 0;
    ::posix_spawn_file_actions_destroy(&actions);
    if (started)
        m_process = process;
    else
        m_channel.Close();
    return started;
}

void CChildProcess::End(int milliseconds) {
    m_channel.Close();
    for (int waited = 0; IsRunning() && waited < milliseconds; waited += pollMilliseconds) {
        const pid_t ended = ::waitpid(m_process, nullptr, WNOHANG);
        if (ended == m_process || (ended < 0 && errno == ECHILD))
            m_process = 0;
        else
            std::this_thread::sleep_for(std::chrono::milliseconds(pollMilliseconds));
    }
    Kill();
}

void CChildProcess::Kill() {
    m_channel.Close();
    if (!IsRunning())
        return;
    ::kill(m_process, SIGKILL);
    while (::waitpid(m_process, nullptr, 0) < 0 && errno == EINTR)
        continue;
    m_process = 0;
}

void EndWithParent() {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
}

} // namespace velmor
