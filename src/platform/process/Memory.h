#pragma once

#include <cstddef>
#include <cstdint>

namespace velmor {

/// Keeps freed memory for the next image instead of giving it back to the system: getting fresh pages for every
/// plane takes longer than reading and drawing the image. For a program's start, before it has threads.
void KeepFreedMemory();

/// Asks the system to back memory that was just taken, and not touched yet, with large pages: fewer of them have to
/// be made, and looked up when pixels far apart are read. For megabytes; of less nothing is asked.
void PreferLargePages(void* begin, std::size_t size);

/// The bytes of memory that a program can take without the system running out of it; the largest number where that
/// is not known.
std::uint64_t AvailableMemory();

} // namespace velmor
