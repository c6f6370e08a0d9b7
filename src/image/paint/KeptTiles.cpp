#include "image/paint/KeptTiles.h"

#include <algorithm>

namespace velmor {

namespace {

// Calls visit(bytes, count) for each run of bytes that a tile has in the image: of the line mask, then of each
// plane. Tiles begin at whole bytes of the mask; its last one may hold padding.
template<class Image, class Visit>
void ForEachRun(Image& image, const CRect& tile, Visit visit) {
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

} // namespace

CRect CKeptTiles::RectOf(const Place& place, const CCelImg& image) {
    const auto [column, row] = place;
    return {column * side, row * side, std::min((column + 1) * side, image.Width()),
            std::min((row + 1) * side, image.Height())};
}

void CKeptTiles::Keep(const CCelImg& image, const CRect& rect) {
    const CRect inside = Intersection(rect, {0, 0, image.Width(), image.Height()});
    if (inside.IsEmpty())
        return;
    for (int row = inside.y / side; row <= (inside.endY - 1) / side; ++row)
        for (int column = inside.x / side; column <= (inside.endX - 1) / side; ++column) {
            const Place place{column, row};
            if (m_tiles.contains(place))
                continue;
            std::vector<std::uint8_t> bytes;
            bytes.reserve(std::size_t{side} * (side * 4 + side / 8));
            ForEachRun(image, RectOf(place, image),
                       [&](const std::uint8_t* run, int count) { bytes.insert(bytes.end(), run, run + count); });
            m_tiles.emplace(place, std::move(bytes));
        }
}

void CKeptTiles::KeepOnly(const CRect& rect) {
    std::erase_if(m_tiles, [&](const auto& tile) {
        const auto [column, row] = tile.first;
        const CRect whole{column * side, row * side, (column + 1) * side, (row + 1) * side};
        return Intersection(whole, rect).IsEmpty();
    });
}

CRect CKeptTiles::Restore(CCelImg& image) const {
    CRect restored;
    for (const auto& [place, bytes] : m_tiles) {
        const CRect tile = RectOf(place, image);
        const std::uint8_t* from = bytes.data();
        ForEachRun(image, tile, [&](std::uint8_t* run, int count) {
            std::copy_n(from, count, run);
            from += count;
        });
        restored = Union(restored, tile);
    }
    return restored;
}

} // namespace velmor
