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

/// Time against size: of drawn frames, files are about as small with Fast as with Normal and a tenth smaller with
/// Best, which takes ten times as long.
enum class PngCompression { Fast, Normal, Best };

/// Writes a PNG atomically; false when it cannot be written. The pixels are the same whatever the compression.
[[nodiscard]] bool WritePng(const Path& path, const CPngPixels& pixels,
                            PngCompression compression = PngCompression::Normal);

} // namespace velmor
