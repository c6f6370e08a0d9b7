#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace velmor {

/// The one colour of a tile, or one of the values below.
using TileColor = std::uint64_t;
constexpr TileColor mixedColors = TileColor{1} << 32;
constexpr TileColor mixedOpaqueColors = TileColor{2} << 32; ///< mixed, and none is transparent at all

/// Whether a tile of the image is of more than one colour.
constexpr bool IsMixedTile(TileColor color) {
    return color == mixedColors || color == mixedOpaqueColors;
}
constexpr bool IsOpaqueTile(TileColor color) {
    return color >> 24 == 255 || color == mixedOpaqueColors;
}

/// Where an image is the same over large areas: all transparent, or all of one colour, as most of a painted cel is.
///
/// The image is divided into square tiles. For each tile the map holds the distance, in tiles along the farther
/// axis, to the nearest tile that differs: 0 for a tile that is not uniform itself, n when all tiles up to n - 1
/// away are alike. Beyond the image everything counts as alike.
class CUniformMap {
public:
    static constexpr int tileBits = 3;
    static constexpr int tileSide = 1 << tileBits;

    CUniformMap() = default;
    /// `tileColors`: row after row, for an image of width x height pixels.
    CUniformMap(std::span<const TileColor> tileColors, int width, int height);

    /// Tiles that a width or height takes.
    static std::size_t TileCount(int pixels) {
        return static_cast<std::size_t>((pixels + tileSide - 1) >> tileBits);
    }

    /// `x` and `y` inside the image.
    int DistanceAt(int x, int y) const { return m_distances[IndexOf(x, y)]; }
    /// The colour of the tile with (x, y), whose distance is above 0; 0 where it is transparent. Kept here since
    /// the pixels of large areas are otherwise never looked at, and so far away in memory.
    std::uint32_t ColorAt(int x, int y) const { return m_colors[IndexOf(x, y)]; }
    /// How far, in pixels along either axis, a point may move from any place of a tile with this distance so that
    /// it and the next pixel of both axes stay in the uniform area. Not positive when nothing is known. A point
    /// that has pixels of its tile ahead of it may move as many more.
    static int ReachOf(int distance) { return (distance - 1) * tileSide - 2; }

    std::size_t ByteCount() const { return m_distances.size() + m_colors.size() * sizeof(std::uint32_t); }

private:
    std::size_t IndexOf(int x, int y) const {
        return static_cast<std::size_t>(y >> tileBits) * m_columns + static_cast<std::size_t>(x >> tileBits);
    }

    std::size_t m_columns = 0;
    std::vector<std::uint8_t> m_distances;
    std::vector<std::uint32_t> m_colors;
};

} // namespace velmor
