#include "platform/process/Memory.h"

#include <cstdlib> // says which C library it is
#include <fstream>
#include <limits>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

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

void PreferLargePages(void* begin, std::size_t size) {
#ifdef MADV_HUGEPAGE
    constexpr std::size_t least = std::size_t{4} << 20;
    const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    if (size < least)
        return;
    const std::size_t toPage = (page - reinterpret_cast<std::uintptr_t>(begin) % page) % page;
    // Where the system does not have them, all stays as it is.
    static_cast<void>(
        ::madvise(static_cast<std::byte*>(begin) + toPage, (size - toPage) / page * page, MADV_HUGEPAGE));
#else
    static_cast<void>(begin);
    static_cast<void>(size);
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
