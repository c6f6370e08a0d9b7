#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace velmor {

/// The pixels of a PNG that was read: rows of width x channels bytes, red green blue (alpha), top row first.
struct CReadPng {
    int width = 0;
    int height = 0;
    int channels = 3; ///< 4 where the file has transparency of any kind
    std::vector<std::uint8_t> bytes;
};

enum class PngResult {
    Done,
    Corrupt,  ///< no PNG, or not a whole one
    TooLarge, ///< a side is longer than asked for
};

/// Reads a PNG of any colour type and depth, as 8 bits a channel. No memory is taken for more pixels than the
/// file's bytes can stand for. On failure `picture` is empty.
PngResult ReadPng(std::span<const std::uint8_t> file, int largestSide, CReadPng& picture);

} // namespace velmor
