#pragma once

#include "platform/files/Files.h"

#include <cstdint>
#include <functional>
#include <span>

namespace velmor {

/// The pixels of a PNG to write: rows of width x channels bytes, red green blue (alpha), top row first.
struct CPngPixels {
    int width = 0;
    int height = 0;
    int channels = 3; ///< 3 or 4
    std::span<const std::uint8_t> bytes;
};

/// The same for a picture that is kept in another form: its rows are made one after another, from the top.
struct CPngRows {
    int width = 0;
    int height = 0;
    int channels = 3;                                   ///< 3 or 4
    std::function<void(int y, std::uint8_t* row)> fill; ///< writes all of row y, 0 on top
};

/// Time against size: Fast takes a quarter of the time of Normal for files a tenth larger, Best about ten times as
/// long for files that are some hundredths smaller.
enum class PngCompression { Fast, Normal, Best };

/// Writes a PNG atomically; false when it cannot be written. The pixels are the same whatever the compression.
[[nodiscard]] bool WritePng(const Path& path, const CPngPixels& pixels,
                            PngCompression compression = PngCompression::Normal);
[[nodiscard]] bool WritePng(const Path& path, const CPngRows& rows, PngCompression compression);

} // namespace velmor
