#include "views/cel/DisplayPyramid.h"
#include "RandomImages.h"

#include <gtest/gtest.h>

#include <array>

namespace velmor {
namespace {

constexpr CSize size{37, 21};

CDisplayBitmap RandomBitmap(std::mt19937& random) {
    CDisplayBitmap bitmap{size.width - size.width % 4 + 4, size.height, {}};
    bitmap.bytes.resize(static_cast<std::size_t>(bitmap.width) * static_cast<std::size_t>(bitmap.height) * 3);
    for (std::uint8_t& byte : bitmap.bytes)
        byte = static_cast<std::uint8_t>(random());
    return bitmap;
}

int ChannelOf(const CDisplayBitmap& bitmap, int x, int y, int channel) {
    return bitmap.bytes[static_cast<std::size_t>((y * bitmap.width + x) * 3 + channel)];
}

// The mean of the square of pixels whose lower left one is (x, y), of means of means as images of half the size are
// made, without their rounding.
double MeanOf(const CDisplayBitmap& bitmap, int x, int y, int side, int channel) {
    double sum = 0;
    for (int row = y; row < y + side; ++row)
        for (int column = x; column < x + side; ++column)
            sum += ChannelOf(bitmap, column, row, channel);
    return sum / (side * side);
}

TEST(DisplayPyramidTest, ShrunkPixelsAreMeansAlsoAfterAChange) {
    std::mt19937 random(5);
    CDisplayBitmap bitmap = RandomBitmap(random);
    CDisplayPyramid pyramid;
    for (int round = 0; round < 50; ++round) {
        const int level = RandomBetween(random, 0, 3);
        const int side = 1 << level;
        pyramid.Prepare(bitmap, size, 1.0 / side);
        for (int y = 0; y + side <= size.height; y += side)
            for (int x = 0; x + side <= size.width; x += side) {
                std::array<std::uint32_t, 1> color{};
                pyramid.Sample({x + side / 2.0, y + side / 2.0}, {1, 0}, 0, color);
                for (int channel = 0; channel < 3; ++channel)
                    ASSERT_NEAR(color[0] >> (8 * channel) & 255, MeanOf(bitmap, x, y, side, channel), 1.0 + level);
            }
        const int x = RandomBetween(random, 0, size.width - 1);
        const int y = RandomBetween(random, 0, size.height - 1);
        for (int channel = 0; channel < 3; ++channel)
            bitmap.bytes[static_cast<std::size_t>((y * bitmap.width + x) * 3 + channel)] ^= 255;
        pyramid.Change({x, y, x + 1, y + 1});
    }
}

TEST(DisplayPyramidTest, BetweenPixelsStandsTheirMixture) {
    std::mt19937 random(6);
    const CDisplayBitmap bitmap = RandomBitmap(random);
    CDisplayPyramid pyramid;
    pyramid.Prepare(bitmap, size, 1.4);
    std::array<std::uint32_t, 60> colors{};
    pyramid.Sample({0.6, 3.25}, {0.5, 0.125}, 2, colors);
    for (std::size_t i = 0; i < colors.size(); ++i) {
        const double x = 0.6 + 0.5 * (static_cast<double>(i) + 2) - 0.5;
        const double y = 3.25 + 0.125 * (static_cast<double>(i) + 2) - 0.5;
        const int left = static_cast<int>(x);
        const int bottom = static_cast<int>(y);
        for (int channel = 0; channel < 3; ++channel) {
            const auto at = [&](int dx, int dy) { return ChannelOf(bitmap, left + dx, bottom + dy, channel); };
            const double low = at(0, 0) + (at(1, 0) - at(0, 0)) * (x - left);
            const double high = at(0, 1) + (at(1, 1) - at(0, 1)) * (x - left);
            ASSERT_NEAR(colors[i] >> (8 * channel) & 255, low + (high - low) * (y - bottom), 4) << i;
        }
    }
}

} // namespace
} // namespace velmor
