#pragma once

#include "platform/files/Files.h"

#include <cstdint>
#include <span>

namespace velmor {

/// The pixels of a PNG to write: rows of width x channels bytes, red green blue (alpha), top row first.
struct CPngPixels {
    int width = 0;
    int height = 0;
    int channels = 3; ///< 3 or 4
    std::span<const std::uint8_t> bytes;
};

/// Writes a PNG atomically; false when it cannot be written. `level` is the zlib level, 1 (fast) to 9 (small).
[[nodiscard]] bool WritePng(const Path& path, const CPngPixels& pixels, int level = 3);

} // namespace velmor
