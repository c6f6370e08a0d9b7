#pragma once

namespace velmor {

/// Keeps freed memory for the next image instead of giving it back to the system: getting fresh pages for every
/// plane takes longer than reading and drawing the image. For a program's start, before it has threads.
void KeepFreedMemory();

} // namespace velmor
