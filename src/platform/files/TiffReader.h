#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace velmor {

/// The pixels of a TIFF that was read: rows of width x 4 bytes, red green blue alpha, top row first.
struct CReadTiff {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> bytes;
};

enum class TiffResult {
    Done,
    Corrupt,  ///< no TIFF, not a whole one, or of a kind that cannot be shown
    TooLarge, ///< a side is longer than asked for
};

/// Reads the first picture of a TIFF, as 8 bits a channel. No memory is taken for more pixels than the file's bytes
/// can stand for. On failure `picture` is empty.
TiffResult ReadTiff(std::span<const std::uint8_t> file, int largestSide, CReadTiff& picture);

} // namespace velmor
