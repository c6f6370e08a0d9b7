#pragma once

#include "image/render/UniformMap.h"

#include <cstdint>
#include <span>

namespace velmor {

/// Writes the colour of each tile (CUniformMap::tileSide pixels square, the last one cut off by the image) of a row
/// of tiles; `pixels` are their rows of `width` pixels. All transparent colours are the same, 0.
void FindTileColors(std::span<const std::uint32_t> pixels, int width, TileColor* colors);

/// Packs planes of one size into pixels, blue in the low byte. Returns whether every alpha is 255.
[[nodiscard]] bool InterleavePlanes(std::span<const std::uint8_t> blue, std::span<const std::uint8_t> green,
                                    std::span<const std::uint8_t> red, std::span<const std::uint8_t> alpha,
                                    std::span<std::uint32_t> pixels);

/// Between 3 bytes a pixel and a word a pixel.
void UnpackPixels(std::span<const std::uint8_t> bytes, std::uint32_t* pixels);
void PackPixels(const std::uint32_t* pixels, std::span<std::uint8_t> bytes);

} // namespace velmor
