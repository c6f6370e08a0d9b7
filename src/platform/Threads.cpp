#include "platform/Threads.h"

#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace velmor {

void LowerThreadPriority() {
    // On Linux a nice value belongs to a thread. A refusal leaves the usual priority, which only costs smoothness.
    constexpr int lowest = 19;
    const auto thread = static_cast<id_t>(::syscall(SYS_gettid));
    static_cast<void>(::setpriority(PRIO_PROCESS, thread, lowest));
}

} // namespace velmor
