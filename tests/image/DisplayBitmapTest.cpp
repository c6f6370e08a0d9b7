#include "image/DisplayBitmap.h"

#include <gtest/gtest.h>
#include <random>

using namespace velmor;

namespace {

// The picture over the checkerboard, a byte at a time. Channel 0 is blue; the grid colours' bytes are red first.
std::vector<std::uint8_t> ByTheFormula(const CCelImg& image, const CGridSettings& grid) {
    const int displayWidth = image.Width() - image.Width() % 4 + 4;
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(displayWidth * 3 * image.Height()));
    for (int y = 0; y < image.Height(); ++y)
        for (int x = 0; x < image.Width(); ++x) {
            const bool even = x / grid.size % 2 == y / grid.size % 2;
            const ColorRef background = even ? grid.color1 : grid.color2;
            const CColor color = image.ColorAt(x, y);
            const int values[3] = {color.blue, color.green, color.red};
            for (int i = 0; i < 3; ++i) {
                const int under = static_cast<int>(background >> 8 * i & 0xff);
                bytes[static_cast<std::size_t>((y * displayWidth + x) * 3 + i)] =
                    static_cast<std::uint8_t>((values[i] * color.alpha + under * (255 - color.alpha)) / 255);
            }
        }
    return bytes;
}

CCelImg Noise(int width, int height) {
    CCelImg image;
    EXPECT_TRUE(image.CreatePicture(width, height, "a.rgba"));
    std::mt19937 random(5);
    for (const Channel channel : {Channel::Red, Channel::Green, Channel::Blue, Channel::Alpha})
        for (std::uint8_t& value : image.PlaneOf(channel))
            value = static_cast<std::uint8_t>(random() % 4 == 0 ? 255 : random());
    return image;
}

} // namespace

TEST(DisplayBitmapTest, EqualsTheFormula) {
    CDisplayBitmap bitmap;
    for (const int width : {2, 3, 4, 41, 200})
        for (const int square : {1, 3, 20, 500}) {
            const CCelImg image = Noise(width, 70);
            const CGridSettings grid{MakeColorRef(1, 128, 250), MakeColorRef(255, 77, 0), square};
            ASSERT_TRUE(CreateBitmap(image, grid, bitmap));
            EXPECT_EQ(bitmap.width, width - width % 4 + 4);
            EXPECT_TRUE(bitmap.bytes == ByTheFormula(image, grid));
        }
}

TEST(DisplayBitmapTest, BlendsEveryValueAsTheFormula) {
    CCelImg image;
    ASSERT_TRUE(image.CreatePicture(256, 256, "a.rgba"));
    CDisplayBitmap bitmap;
    for (const std::uint8_t under : std::vector<std::uint8_t>{0, 1, 127, 254, 255}) {
        const CGridSettings grid{MakeColorRef(under, under, under), MakeColorRef(under, under, under), 20};
        for (int alpha = 0; alpha < 256; ++alpha)
            for (int value = 0; value < 256; ++value) {
                const auto byte = static_cast<std::uint8_t>(value);
                image.SetColorAt(value, alpha, {byte, byte, byte, static_cast<std::uint8_t>(alpha)});
            }
        ASSERT_TRUE(CreateBitmap(image, grid, bitmap));
        EXPECT_TRUE(bitmap.bytes == ByTheFormula(image, grid));
    }
}

TEST(DisplayBitmapTest, UpdatesTheRectangleAndNothingElse) {
    CCelImg image = Noise(50, 40);
    const CGridSettings grid;
    CDisplayBitmap bitmap;
    ASSERT_TRUE(CreateBitmap(image, grid, bitmap));
    std::vector<std::uint8_t> expected = bitmap.bytes;
    for (const Channel channel : {Channel::Red, Channel::Green, Channel::Blue})
        std::ranges::fill(image.PlaneOf(channel), std::uint8_t{17});
    const std::vector<std::uint8_t> redrawn = ByTheFormula(image, grid);
    for (std::size_t y = 5; y < 30; ++y)
        std::copy_n(redrawn.begin() + static_cast<std::ptrdiff_t>((y * 52 + 13) * 3), 27 * 3,
                    expected.begin() + static_cast<std::ptrdiff_t>((y * 52 + 13) * 3));
    UpdateBitmap(image, grid, {13, 5, 40, 30}, bitmap);
    EXPECT_TRUE(bitmap.bytes == expected);
    UpdateBitmap(image, grid, {-5, -5, 500, 500}, bitmap);
    EXPECT_TRUE(bitmap.bytes == redrawn);
}

TEST(DisplayBitmapTest, NeedsAnImage) {
    CDisplayBitmap bitmap;
    EXPECT_EQ(CreateBitmap(CCelImg(), {}, bitmap).Message(),
              "Internal error : CreateBitmap called with no cel/picture image!");
    UpdateBitmap(CCelImg(), {}, {0, 0, 5, 5}, bitmap);
    EXPECT_TRUE(bitmap.bytes.empty());
}

TEST(GridSettingsTest, RedOfColor2DoesNotComeBack) {
    CProfile profile;
    EXPECT_EQ(ReadGridSettings(profile), CGridSettings());
    WriteGridSettings(profile, {MakeColorRef(1, 2, 3), MakeColorRef(4, 5, 6), 7});
    EXPECT_EQ(ReadGridSettings(profile), (CGridSettings{MakeColorRef(1, 2, 3), MakeColorRef(255, 5, 6), 7}));
    static_cast<void>(profile.WriteInt("CELVIEW_GRIDSIZE", "GRIDSIZE", 0));
    EXPECT_EQ(ReadGridSettings(profile).size, 1);
}
