#pragma once

#include <cstdint>

namespace velmor {

/// Keeps freed memory for the next image instead of giving it back to the system: getting fresh pages for every
/// plane takes longer than reading and drawing the image. For a program's start, before it has threads.
void KeepFreedMemory();

/// The bytes of memory that a program can take without the system running out of it; the largest number where that
/// is not known.
std::uint64_t AvailableMemory();

} // namespace velmor
