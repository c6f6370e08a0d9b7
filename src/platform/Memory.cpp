#include "platform/Memory.h"

#include <cstdlib> // says which C library it is
#include <limits>

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

} // namespace velmor
