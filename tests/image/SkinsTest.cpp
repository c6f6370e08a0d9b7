#include "image/paper/Skins.h"
#include "image/DisplayBitmap.h"

#include "RandomImages.h"

#include <array>
#include <gtest/gtest.h>

namespace velmor::testing {
namespace {

constexpr std::array<int, 3> tintOf(ColorRef tint) {
    return {BlueOf(tint), GreenOf(tint), RedOf(tint)};
}

CCelImg RandomDrawing(std::mt19937& random, int width, int height) {
    CCelImg cel = RandomCel(random, width, height);
    for (int i = 0; i < 5; ++i)
        DrawRandomLine(cel, random);
    return cel;
}

CSkin SkinOf(const CCelImg& cel, bool withPaint, CPoint centre) {
    CSkin skin;
    skin.ink = std::make_shared<const CInk>(InkOf(cel, withPaint));
    skin.placement.centreX = centre.x;
    skin.placement.centreY = centre.y;
    return skin;
}

// The ink that lies on a pixel of a sheet, of a skin that is not turned.
int CoverAt(const CSkin& skin, int x, int y) {
    const int inkX = x - static_cast<int>(skin.placement.centreX) + skin.ink->size.width / 2;
    const int inkY = y - static_cast<int>(skin.placement.centreY) + skin.ink->size.height / 2;
    return skin.ink->At(inkX, inkY) * skin.percent / 100;
}

// One channel (0 blue, 1 green, 2 red) of what is shown, a skin after the other.
int PlainlyShown(int shown, const std::vector<CSkin>& skins, int x, int y, std::size_t channel) {
    int light = 255;
    int color = 0;
    int alpha = 0;
    for (const CSkin& skin : skins) {
        const int cover = CoverAt(skin, x, y);
        const int tint = tintOf(skin.tint)[channel];
        if (skin.over) {
            color = tint * cover / 255 + color * (255 - cover) / 255;
            alpha = cover + alpha * (255 - cover) / 255;
        } else {
            light = light * (255 - (255 - tint) * cover / 255) / 255;
        }
    }
    return color + shown * light / 255 * (255 - alpha) / 255;
}

} // namespace

TEST(InkTest, HoldsLinesByTheirOpacityAndPaintOnRequest) {
    CCelImg cel;
    ASSERT_TRUE(cel.CreateCel(40, 9, "1.bit"));
    static_cast<void>(cel.InvertCel()); // the padding of the mask as well
    for (int y = 0; y < 9; ++y)
        for (int x = 0; x < 40; ++x)
            cel.SetLine(x, y, false);
    EXPECT_TRUE(InkOf(cel, true).IsEmpty()) << "paper";
    cel.SetLine(39, 2, true);
    cel.SetColorAt(39, 2, {255, 255, 255, 200}); // a white line is one
    cel.SetLine(5, 7, true);
    cel.SetColorAt(5, 7, {0, 0, 0, 0}); // one that cannot be seen is not
    cel.SetColorAt(20, 4, {0, 0, 0, 255});
    cel.SetColorAt(21, 4, {0, 0, 0, 128});

    const CInk lines = InkOf(cel, false);
    EXPECT_EQ(lines.area, (CRect{39, 2, 40, 3}));
    EXPECT_EQ(lines.At(39, 2), 200);
    EXPECT_EQ(lines.At(20, 4), 0);
    const CInk all = InkOf(cel, true);
    EXPECT_EQ(all.area, (CRect{20, 2, 40, 5}));
    EXPECT_EQ(all.At(20, 4), 127);
    EXPECT_EQ(all.At(21, 4), 64);
    EXPECT_EQ(all.At(39, 2), 200);
    EXPECT_EQ(all.At(30, 3), 0);

    CCelImg picture;
    ASSERT_TRUE(picture.CreatePicture(6, 6, "a.rgba"));
    picture.SetColorAt(1, 1, {0, 0, 0, 255});
    EXPECT_EQ(InkOf(picture, false).At(1, 1), 255);
    EXPECT_TRUE(InkOf(CCelImg(), false).IsEmpty());
}

TEST(SkinsTest, ShineThroughAsComputedPlainly) {
    std::mt19937 random(3);
    const CSize size{101, 70};
    CCelImg edited = RandomCel(random, size.width, size.height);
    std::vector<CSkin> skins{SkinOf(RandomDrawing(random, 101, 70), false, {50, 35}),
                             SkinOf(RandomDrawing(random, 160, 120), true, {50, 35}),
                             SkinOf(RandomDrawing(random, 31, 20), true, {95, 3}),
                             SkinOf(RandomDrawing(random, 60, 70), false, {-10, 60})};
    skins[0].tint = MakeColorRef(226, 88, 34);
    skins[1].tint = MakeColorRef(30, 110, 220);
    skins[1].percent = 42;
    skins[2].over = skins[3].over = true;
    skins[2].tint = MakeColorRef(10, 200, 90);
    skins[2].percent = 80;
    const CSkinSheet sheet = LaySkins(skins, size);
    const CGridSettings grid;
    CDisplayBitmap plain;
    CDisplayBitmap bitmap;
    ASSERT_TRUE(CreateBitmap(edited, grid, plain));
    ASSERT_TRUE(CreateBitmap(edited, grid, bitmap, sheet));
    const auto expectAll = [&] {
        for (int y = 0; y < size.height; ++y)
            for (int x = 0; x < size.width; ++x)
                for (std::size_t channel = 0; channel < 3; ++channel) {
                    const std::size_t at = static_cast<std::size_t>((y * bitmap.width + x) * 3) + channel;
                    ASSERT_EQ(bitmap.bytes[at], PlainlyShown(plain.bytes[at], skins, x, y, channel))
                        << x << ", " << y;
                }
    };
    expectAll();

    // A stroke: its rectangle is redone, and nothing beside it.
    for (int x = 20; x < 80; ++x)
        edited.SetColorAt(x, 33, {0, 0, 0, 255});
    UpdateBitmap(edited, grid, {20, 33, 80, 34}, plain);
    UpdateBitmap(edited, grid, {20, 33, 80, 34}, bitmap, sheet);
    expectAll();
    EXPECT_EQ(DisplayColor(edited, grid, {30, 33}), MakeColorRef(0, 0, 0)) << "what is picked has no skins on it";
}

TEST(SkinsTest, ChangeNothingWhereThereAreNone) {
    std::mt19937 random(4);
    const CCelImg edited = RandomDrawing(random, 50, 40);
    CSkin skin = SkinOf(edited, true, {25, 20});
    CDisplayBitmap plain;
    CDisplayBitmap bitmap;
    ASSERT_TRUE(CreateBitmap(edited, {}, plain));
    const CSkin unread;
    CCelImg blank;
    ASSERT_TRUE(blank.CreateCel(50, 40, "2.bit"));
    for (const CSkinSheet& sheet :
         {LaySkins({}, {50, 40}), LaySkins(std::vector{unread, SkinOf(blank, true, {25, 20})}, {50, 40}),
          LaySkins(std::vector{skin}, {50, 41})}) {
        ASSERT_TRUE(CreateBitmap(edited, {}, bitmap, sheet));
        EXPECT_TRUE(bitmap.bytes == plain.bytes);
    }
    const CDisplayBitmap empty = EmptyBitmap({50, 40}, {});
    CCelImg clear;
    ASSERT_TRUE(clear.CreatePicture(50, 40, "a.rgba"));
    std::ranges::fill(clear.PlaneOf(Channel::Alpha), std::uint8_t{0});
    ASSERT_TRUE(CreateBitmap(clear, {}, plain));
    EXPECT_TRUE(empty.bytes == plain.bytes);
}

TEST(SkinsTest, LieWhereTheCompositorPlacesThem) {
    std::mt19937 random(9);
    CCelImg picture;
    ASSERT_TRUE(picture.CreatePicture(60, 45, "a.rgba"));
    for (int y = 10; y < 30; ++y)
        for (int x = 7; x < 41; ++x)
            picture.SetColorAt(x, y, {0, 0, 0, 255});
    for (const double angle : {0.0, 0.3, 2.5, -1.2})
        for (const double scale : {1.0, 0.7, 2.0}) {
            CSkin skin = SkinOf(picture, false, {});
            skin.placement = {48.25, 39.5, angle, scale, scale, 0, 1, 1, true};
            const CSize size{96, 80};
            std::vector<std::uint8_t> pixels(96 * 80 * 3, 255);
            ASSERT_TRUE(Render(picture, skin.placement, {pixels, size.width, size.height}));
            const CSkinSheet sheet = LaySkins(std::span(&skin, 1), size);
            // At the image's own edge the compositor does not interpolate; the square ends before it.
            for (std::size_t i = 0; i < sheet.under.size(); ++i)
                ASSERT_NEAR(static_cast<int>(sheet.under[i] & 0xff), pixels[i * 3], 4) << angle << " " << scale;
        }
}

} // namespace velmor::testing
