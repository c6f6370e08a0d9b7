#include "image/render/OpaqueMap.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <random>

namespace velmor {
namespace {

constexpr int side = CUniformMap::tileSide;

/// An image known by its tiles.
struct CTiles {
    int width;
    int height;
    std::vector<TileColor> colors;

    CTiles(int w, int h) : width(w), height(h), colors(CUniformMap::TileCount(w) * CUniformMap::TileCount(h)) {}

    int Columns() const { return static_cast<int>(CUniformMap::TileCount(width)); }
    int Rows() const { return static_cast<int>(CUniformMap::TileCount(height)); }
    TileColor& At(int x, int y) { return colors[static_cast<std::size_t>(y * Columns() + x)]; }
};

/// The distance along the farther axis from (x, y) to the nearest tile for which `isSought`, at most 255.
template<class IsSought>
int DistanceTo(CTiles& tiles, int x, int y, int margin, IsSought isSought) {
    int nearest = 255;
    for (int otherY = -margin; otherY < tiles.Rows() + margin; ++otherY)
        for (int otherX = -margin; otherX < tiles.Columns() + margin; ++otherX)
            if (isSought(otherX, otherY))
                nearest = std::min(nearest, std::max(std::abs(otherX - x), std::abs(otherY - y)));
    return nearest;
}

/// Mostly of one colour, with spots of others.
CTiles MakeTiles(std::mt19937& random, int width, int height) {
    const TileColor kinds[] = {mixedColors, mixedOpaqueColors, 0, 0xff102030, 0x80102030};
    CTiles tiles(width, height);
    std::ranges::fill(tiles.colors, kinds[random() % std::size(kinds)]);
    for (std::size_t spots = random() % 6; spots > 0; --spots)
        tiles.colors[random() % tiles.colors.size()] = kinds[random() % std::size(kinds)];
    return tiles;
}

TEST(TileMapsTest, KnowHowFarTheNearestOtherTileIs) {
    std::mt19937 random(8);
    const int widths[] = {2, 8, 9, 64, 100, 8 * 300};
    const int heights[] = {2, 8, 9, 50, 203};
    for (int round = 0; round < 60; ++round) {
        CTiles tiles =
            MakeTiles(random, widths[random() % std::size(widths)], heights[random() % std::size(heights)]);
        const CUniformMap uniform(tiles.colors, tiles.width, tiles.height);
        const COpaqueMap opaque(tiles.colors, tiles.width, tiles.height);
        ASSERT_EQ(opaque.IsEmpty(), std::ranges::none_of(tiles.colors, IsOpaqueTile));
        for (int y = 0; y < tiles.Rows(); ++y)
            for (int x = 0; x < tiles.Columns(); ++x) {
                const TileColor own = tiles.At(x, y);
                const int toOther = DistanceTo(
                    tiles, x, y, 0, [&](int otherX, int otherY) { return tiles.At(otherX, otherY) != own; });
                ASSERT_EQ(uniform.DistanceAt(x * side, y * side), IsMixedTile(own) ? 0 : toOther) << x << ", " << y;
                if (opaque.IsEmpty())
                    continue;
                const int toVisible = DistanceTo(tiles, x, y, 1, [&](int otherX, int otherY) {
                    const bool isWhole =
                        otherX >= 0 && otherX < tiles.width / side && otherY >= 0 && otherY < tiles.height / side;
                    return !isWhole || !IsOpaqueTile(tiles.At(otherX, otherY));
                });
                ASSERT_EQ(opaque.ReachAt(x * side, y * side), (toVisible - 1) * side) << x << ", " << y;
            }
    }
}

} // namespace
} // namespace velmor
