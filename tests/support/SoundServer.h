#pragma once

#include "TempFolder.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <map>
#include <optional>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace velmor::testing {

/// A real sound server of the test's own, in a folder of its own: what is played comes back from its microphone.
/// SDL uses it while the object lives.
class CSoundServer {
public:
    static bool IsInstalled() { return std::system("command -v pulseaudio >/dev/null 2>&1") == 0; }

    explicit CSoundServer(int rate) : m_socket((m_folder / "socket").string()) {
        const std::string folder = m_folder.Path().string();
        for (const char* name : {"HOME", "XDG_RUNTIME_DIR", "PULSE_RUNTIME_PATH"})
            Set(name, folder);
        Set("SDL_AUDIODRIVER", "pulseaudio");
        Set("PULSE_SERVER", "unix:" + m_socket);
        Set("PULSE_COOKIE", folder + "/cookie");
        Set("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + folder + "/none");
        Start({"pulseaudio", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no", "--disable-shm=yes",
               "--realtime=no", "-n", "-F", "/dev/null", "-L",
               "module-native-protocol-unix auth-anonymous=1 socket=" + m_socket, "-L",
               "module-null-sink sink_name=out format=u8 channels=1 rate=" + std::to_string(rate), "-L",
               "module-remap-source source_name=microphone master=out.monitor"});
    }
    CSoundServer(const CSoundServer&) = delete;
    CSoundServer& operator=(const CSoundServer&) = delete;
    ~CSoundServer() {
        Kill();
        for (const auto& [name, value] : m_before)
            value ? ::setenv(name.c_str(), value->c_str(), 1) : ::unsetenv(name.c_str());
    }

    bool IsUp() const { return ::access(m_socket.c_str(), F_OK) == 0; }
    /// Ends it without warning.
    void Kill() {
        if (m_process <= 0)
            return;
        ::kill(m_process, SIGKILL);
        ::waitpid(m_process, nullptr, 0);
        m_process = 0;
    }

private:
    void Set(const std::string& name, const std::string& value) {
        const char* before = std::getenv(name.c_str());
        m_before[name] = before != nullptr ? std::optional<std::string>(before) : std::nullopt;
        ::setenv(name.c_str(), value.c_str(), 1);
    }

    void Start(std::vector<std::string> words) {
        std::vector<char*> arguments;
        for (std::string& word : words)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);
        m_process = ::fork();
        if (m_process != 0)
            return;
        ::prctl(PR_SET_PDEATHSIG, SIGKILL); // it does not survive a test that crashes
        const int nothing = ::open("/dev/null", O_RDWR);
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            ::dup2(nothing, stream);
        ::execvp(arguments.front(), arguments.data());
        ::_exit(127);
    }

    CTempFolder m_folder;
    std::string m_socket;
    std::map<std::string, std::optional<std::string>> m_before;
    pid_t m_process = 0;
};

} // namespace velmor::testing
