#include "platform/process/Memory.h"

#include <cstdlib> // says which C library it is
#include <fstream>
#include <limits>
#include <string>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace velmor {

void KeepFreedMemory() {
#ifdef __GLIBC__
    ::mallopt(M_MMAP_THRESHOLD, 1 << 30);
    ::mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
    // One pool for all threads: what one frees, another reuses.
    ::mallopt(M_ARENA_MAX, 1);
#endif
}

std::uint64_t AvailableMemory() {
    std::ifstream figures("/proc/meminfo");
    std::string name, unit;
    for (std::uint64_t kilobytes = 0; figures >> name >> kilobytes && std::getline(figures, unit);)
        if (name == "MemAvailable:")
            return kilobytes * 1024;
    return std::numeric_limits<std::uint64_t>::max();
}

} // namespace velmor
