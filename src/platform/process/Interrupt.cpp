#include "platform/process/Interrupt.h"

#include "platform/files/Files.h"

#include <csignal>
#include <unistd.h>

namespace velmor {

namespace {

extern "C" void DieWithoutUnfinishedFiles(int signal) {
    DiscardUnfinishedFiles();
    std::raise(signal); // the default action is back in force, and the signal is not held off meanwhile
}

extern "C" void ExitWithoutUnfinishedFiles(int) {
    DiscardUnfinishedFiles();
    ::_exit(terminatedStatus);
}

} // namespace

void RemoveUnfinishedFilesOnInterrupt() {
    DiscardUnfinishedFiles(); // there are none yet, but the handler may not be the first to ask for their list
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction before {};
        if (::sigaction(signal, nullptr, &before) == 0 && before.sa_handler == SIG_IGN)
            continue;
        struct sigaction action {};
        action.sa_handler = DieWithoutUnfinishedFiles;
        action.sa_flags = static_cast<int>(SA_RESETHAND | SA_NODEFER);
        ::sigaction(signal, &action, nullptr);
    }
}

void SurviveFileSizeLimit() {
    struct sigaction action {};
    action.sa_handler = SIG_IGN;
    ::sigaction(SIGXFSZ, &action, nullptr);
}

void EndWithStatusOnTermination() {
    struct sigaction action {};
    action.sa_handler = ExitWithoutUnfinishedFiles;
    ::sigaction(SIGTERM, &action, nullptr);
}

} // namespace velmor
