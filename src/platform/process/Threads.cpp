#include "platform/process/Threads.h"

#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace velmor {

namespace {

constexpr int lowest = 19;

// On Linux a nice value belongs to a thread.
id_t CallingThread() {
    return static_cast<id_t>(::syscall(SYS_gettid));
}

} // namespace

void LowerThreadPriority() {
    // A refusal leaves the usual priority, which only costs smoothness.
    static_cast<void>(::setpriority(PRIO_PROCESS, CallingThread(), lowest));
}

bool HasLowestPriority() {
    return ::getpriority(PRIO_PROCESS, CallingThread()) == lowest;
}

} // namespace velmor
