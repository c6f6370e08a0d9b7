#pragma once

#include "image/Geometry.h"
#include "image/render/UniformMap.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace velmor {

/// Writes the colour of each tile (CUniformMap::tileSide pixels square, the last one cut off by the image) of a row
/// of tiles. `pixels` is the first of size.width x size.height, rows lie `pitch` apart. All transparent colours are
/// the same, 0.
void FindTileColors(const std::uint32_t* pixels, std::ptrdiff_t pitch, CSize size, TileColor* colors);

/// Where a row of each channel begins, in the order of Channel.
using CChannelRows = std::array<const std::uint8_t*, 4>;

/// Packs `count` pixels whose channels lie apart, blue in the low byte. Returns whether every alpha is 255.
[[nodiscard]] bool InterleaveChannels(const CChannelRows& channels, std::size_t count, std::uint32_t* pixels);

/// Between 3 bytes a pixel and a word a pixel.
void UnpackPixels(std::span<const std::uint8_t> bytes, std::uint32_t* pixels);
void PackPixels(const std::uint32_t* pixels, std::span<std::uint8_t> bytes);

} // namespace velmor
