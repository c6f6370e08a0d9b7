#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace velmor {

/// A device's picture on its way to the document: a packed device-independent bitmap (information header, colour
/// table, rows from the bottom row up, each padded to 4 bytes).
using PackedBitmap = std::vector<std::uint8_t>;

/// A packed bitmap of 24 bits a pixel. `rows` holds width x 3 bytes a row (blue, green, red), the top row first.
/// Empty when the sizes do not fit the bytes.
PackedBitmap PackTrueColor(int width, int height, std::span<const std::uint8_t> rows);
/// One of 1 bit a pixel with white as colour 0 and black as colour 1. `rows` holds (width + 7) / 8 bytes a row, the
/// leftmost pixel in the highest bit, a set bit black, the top row first.
PackedBitmap PackLineArt(int width, int height, std::span<const std::uint8_t> rows);
/// The bytes of a packed bitmap whose length nobody has told, by its header; 0 when that makes no sense.
std::size_t PackedBytes(const std::uint8_t* packed);
/// The file of a packed bitmap: its bytes behind a file header.
std::vector<std::uint8_t> BitmapFileOf(std::span<const std::uint8_t> packed);

} // namespace velmor
