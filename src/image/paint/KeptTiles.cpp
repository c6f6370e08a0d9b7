#include "image/paint/KeptTiles.h"

#include <algorithm>

namespace velmor {

std::vector<std::uint8_t> TileBytes(const CCelImg& image, const CRect& tile) {
    std::vector<std::uint8_t> bytes;
    bytes.reserve(std::size_t{tileSide} * (tileSide * 4 + tileSide / 8));
    ForEachTileRun(image, tile,
                   [&](const std::uint8_t* run, int count) { bytes.insert(bytes.end(), run, run + count); });
    return bytes;
}

void CKeptTiles::Keep(const CCelImg& image, const CRect& rect) {
    const CRect inside = Intersection(rect, {0, 0, image.Width(), image.Height()});
    if (inside.IsEmpty())
        return;
    for (int row = inside.y / tileSide; row <= (inside.endY - 1) / tileSide; ++row)
        for (int column = inside.x / tileSide; column <= (inside.endX - 1) / tileSide; ++column) {
            if (const TilePlace place{column, row}; !m_tiles.contains(place))
                m_tiles.emplace(place, TileBytes(image, TileRect(place, image.Width(), image.Height())));
        }
}

void CKeptTiles::KeepOnly(const CRect& rect) {
    std::erase_if(m_tiles, [&](const auto& tile) {
        const auto [column, row] = tile.first;
        const CRect whole{column * tileSide, row * tileSide, (column + 1) * tileSide, (row + 1) * tileSide};
        return Intersection(whole, rect).IsEmpty();
    });
}

} // namespace velmor
