#pragma once

#include "image/CelImg.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace velmor {

/// Side of the tiles in which pieces of images are kept, in pixels: whole bytes of the line mask.
inline constexpr int tileSide = 64;

/// Column and row of a tile.
using TilePlace = std::pair<int, int>;

inline CRect TileRect(const TilePlace& place, int width, int height) {
    const auto [column, row] = place;
    return {column * tileSide, row * tileSide, std::min((column + 1) * tileSide, width),
            std::min((row + 1) * tileSide, height)};
}

/// Calls visit(bytes, count) for each run of bytes that a tile has in an image: of the line mask, if there is one,
/// then of each plane, row by row. The last byte of a row of the mask may hold padding.
template<class Image, class Visit>
void ForEachTileRun(Image& image, const CRect& tile, Visit visit) {
    if (const auto mask = image.LineMask(); !mask.empty())
        for (int y = tile.y; y < tile.endY; ++y) {
            const auto row = static_cast<std::size_t>(y) * static_cast<std::size_t>(image.StrideBits() / 8);
            visit(mask.data() + row + tile.x / 8, (tile.endX - tile.x + 7) / 8);
        }
    for (const Channel channel : {Channel::Blue, Channel::Green, Channel::Red, Channel::Alpha})
        for (int y = tile.y; y < tile.endY; ++y) {
            const auto row = static_cast<std::size_t>(y) * static_cast<std::size_t>(image.Width());
            visit(image.PlaneOf(channel).data() + row + tile.x, tile.endX - tile.x);
        }
}

/// The bytes that a tile has in an image, run after run. May throw std::bad_alloc.
std::vector<std::uint8_t> TileBytes(const CCelImg& image, const CRect& tile);

} // namespace velmor
