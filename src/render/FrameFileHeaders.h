#pragma once

#include "image/Geometry.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace velmor {

// What stands before the pixels in the files of numbered frames.

/// Blue, green and red of a pixel in a frame buffer.
inline constexpr std::size_t frameChannels = 3;

/// Truevision TGA 2.0, uncompressed true colour of 24 or, with alpha, 32 bits, bottom row first.
std::vector<std::uint8_t> TargaHeader(CSize size, bool withAlpha);

inline constexpr std::size_t bitmapHeaderBytes = 14 + 40;
/// A bitmap's row, padded to four bytes.
std::size_t BitmapRowBytes(int width);
/// Windows bitmap with a BITMAPINFOHEADER, 24 bits, bottom row first; `bits` bytes of rows follow.
std::vector<std::uint8_t> BitmapHeader(CSize size, std::size_t bits);

} // namespace velmor
