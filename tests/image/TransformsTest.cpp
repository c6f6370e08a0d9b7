#include "image/transform/Transforms.h"

#include "RandomImages.h"

#include <gtest/gtest.h>
#include <limits>

using namespace velmor;

namespace {

/// `image` with each pixel moved: target(x, y) is where a pixel goes.
template<class Target>
CCelImg Moved(const CCelImg& image, int width, int height, Target target) {
    CCelImg moved;
    const CStatus created = image.LineMask().empty() ? moved.CreatePicture(width, height, image.FilePath())
                                                     : moved.CreateCel(width, height, image.FilePath());
    if (!created)
        std::abort();
    for (int y = 0; y < image.Height(); ++y)
        for (int x = 0; x < image.Width(); ++x) {
            const CPoint to = target(x, y);
            moved.SetColorAt(to.x, to.y, image.ColorAt(x, y));
            if (!image.LineMask().empty())
                moved.SetLine(to.x, to.y, image.IsLine(x, y));
        }
    moved.SetModified(true);
    return moved;
}

bool ShowTheSame(const CCelImg& a, const CCelImg& b) {
    return a.Width() == b.Width() && a.Height() == b.Height() && a.GetLoadState() == b.GetLoadState() &&
           a.FilePath() == b.FilePath() && a.IsModified() == b.IsModified() && Differences(a, b).IsEmpty();
}

CCelImg RandomImage(std::mt19937& random, int number) {
    const int width = RandomBetween(random, 2, 140), height = RandomBetween(random, 2, 140);
    if (number % 2 == 0)
        return RandomPicture(random, width, height);
    CCelImg cel = RandomCel(random, number % 3 == 0 ? 64 : width, height);
    Sprinkle(cel, random, 30);
    return cel;
}

} // namespace

TEST(TransformsTest, FlipsAndQuarterTurnsMoveEveryPixel) {
    std::mt19937 random(1);
    for (int i = 0; i < 60; ++i) {
        const CCelImg before = RandomImage(random, i);
        const int width = before.Width(), height = before.Height();
        CCelImg image = before;
        EXPECT_TRUE(FlipX(image));
        EXPECT_TRUE(ShowTheSame(image, Moved(before, width, height, [=](int x, int y) {
                                    return CPoint{width - 1 - x, y};
                                })));
        EXPECT_TRUE(FlipX(image));
        image.SetModified(false);
        EXPECT_TRUE(AreSame(image, before));

        EXPECT_TRUE(FlipY(image));
        EXPECT_TRUE(ShowTheSame(image, Moved(before, width, height, [=](int x, int y) {
                                    return CPoint{x, height - 1 - y};
                                })));

        const auto turned = [&](double degrees) {
            CCelImg result = before;
            EXPECT_TRUE(Rotate(result, degrees));
            return result;
        };
        const auto quarter = [=](int x, int y) { return CPoint{height - 1 - y, x}; };
        const auto half = [=](int x, int y) { return CPoint{width - 1 - x, height - 1 - y}; };
        const auto threeQuarters = [=](int x, int y) { return CPoint{y, width - 1 - x}; };
        EXPECT_TRUE(ShowTheSame(turned(-360), Moved(before, width, height, [](int x, int y) {
                                    return CPoint{x, y};
                                })));
        EXPECT_TRUE(ShowTheSame(turned(90), Moved(before, height, width, quarter)));
        EXPECT_TRUE(ShowTheSame(turned(-180), Moved(before, width, height, half)));
        EXPECT_TRUE(ShowTheSame(turned(-90), Moved(before, height, width, threeQuarters)));
        EXPECT_TRUE(ShowTheSame(turned(630), Moved(before, height, width, threeQuarters)));
    }
}

TEST(TransformsTest, AFreeTurnFitsTheTurnedCorners) {
    CCelImg cel;
    ASSERT_TRUE(cel.CreateCel(101, 101, "a.bit"));
    for (Channel channel : {Channel::Red, Channel::Green})
        std::ranges::fill(cel.PlaneOf(channel), std::uint8_t{40});
    for (int x = 50; x < 101; ++x) { // from the middle to the right
        cel.SetLine(x, 50, true);
        cel.SetColorAt(x, 50, {0, 0, 0, 255});
    }
    CCelImg turned = cel;
    ASSERT_TRUE(Rotate(turned, 45));
    EXPECT_EQ(turned.Width(), 142);
    EXPECT_EQ(turned.Height(), 142);
    EXPECT_EQ(turned.ColorAt(0, 0), (CColor{255, 255, 255, 255}));
    EXPECT_EQ(turned.ColorAt(70, 100), (CColor{255, 40, 40, 255}));
    for (int i = 0; i < 30; ++i) { // to the upper right: counter-clockwise
        EXPECT_TRUE(turned.IsLine(75 + i, 75 + i)) << i;
        EXPECT_FALSE(turned.IsLine(65 - i, 65 - i)) << i;
        EXPECT_FALSE(turned.IsLine(75 + i, 65 - i)) << i;
    }
    EXPECT_TRUE(turned.IsModified());

    CCelImg picture;
    ASSERT_TRUE(picture.CreatePicture(200, 50, "a.rgba"));
    std::ranges::fill(picture.PlaneOf(Channel::Blue), std::uint8_t{77});
    ASSERT_TRUE(Rotate(picture, -30));
    EXPECT_EQ(picture.Width(), 198); // 199 cos 30 + 49 sin 30 = 196.8
    EXPECT_EQ(picture.Height(), 143);
    EXPECT_EQ(picture.ColorAt(0, 0).alpha, 0);
    EXPECT_EQ(picture.ColorAt(99, 71), (CColor{77, 255, 255, 255}));
}

TEST(TransformsTest, AFreeTurnSamplesBetweenPixels) {
    CCelImg picture;
    ASSERT_TRUE(picture.CreatePicture(90, 90, "a.rgba"));
    for (int y = 0; y < 90; ++y)
        for (int x = 0; x < 90; ++x)
            picture.SetColorAt(x, y, {static_cast<std::uint8_t>(x + y), 0, static_cast<std::uint8_t>(2 * x), 255});
    CCelImg turned = picture;
    ASSERT_TRUE(Rotate(turned, 20));
    const double cosine = 0.9396926, sine = 0.3420201;
    for (int dy = -20; dy <= 20; ++dy)
        for (int dx = -20; dx <= 20; ++dx) {
            const int x = turned.Width() / 2 + dx, y = turned.Height() / 2 + dy;
            const double placeX = x - (turned.Width() - 1) / 2.0, placeY = y - (turned.Height() - 1) / 2.0;
            const double sourceX = 44.5 + placeX * cosine + placeY * sine;
            const double sourceY = 44.5 - placeX * sine + placeY * cosine;
            EXPECT_NEAR(turned.ColorAt(x, y).red, 2 * sourceX, 0.51);
            EXPECT_NEAR(turned.ColorAt(x, y).blue, sourceX + sourceY, 0.51);
        }
}

TEST(TransformsTest, ATurnThatCannotBeKeptLeavesTheImage) {
    CCelImg cel;
    ASSERT_TRUE(cel.CreateCel(2, 33000, "a.bit"));
    const CCelImg before = cel;
    for (const double degrees :
         {90.0, 1.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(Rotate(cel, degrees).Message(), "Invalid cel dimensions");
        EXPECT_TRUE(AreSame(cel, before));
    }
}

TEST(TransformsTest, ColorKeyCombinesTheKeyedPixelsWithTheTransparency) {
    std::mt19937 random(2);
    for (int i = 0; i < 60; ++i) {
        CCelImg picture = RandomPicture(random, 37, 29);
        for (int count = 0; count < 200; ++count) // some near the key, which random colours hardly are
            picture.SetColorAt(RandomBetween(random, 0, 36), RandomBetween(random, 0, 28), {100, 250, 3, 90});
        CColorKey key;
        key.color = {static_cast<std::uint8_t>(RandomBetween(random, 90, 110)), 250, 0, 0};
        key.tolerance = i % 4 == 3 ? 255 : RandomBetween(random, 0, 20);
        key.process = static_cast<ColorKeyProcess>(i % 3);
        key.under = static_cast<ColorUnderKey>(i / 3 % 3);
        CCelImg expected = picture;
        for (int y = 0; y < 29; ++y)
            for (int x = 0; x < 37; ++x) {
                CColor color = picture.ColorAt(x, y);
                const bool isKeyed = std::abs(color.red - key.color.red) <= key.tolerance &&
                                     std::abs(color.green - key.color.green) <= key.tolerance &&
                                     std::abs(color.blue - key.color.blue) <= key.tolerance;
                if (isKeyed && key.under != ColorUnderKey::Keep)
                    color.red = color.green = color.blue = key.under == ColorUnderKey::White ? 255 : 0;
                if (isKeyed)
                    color.alpha = key.process == ColorKeyProcess::Subtract ? 255 : 0;
                else if (key.process == ColorKeyProcess::Replace)
                    color.alpha = 255;
                expected.SetColorAt(x, y, color);
            }
        expected.SetModified(true);
        EXPECT_TRUE(ColorKey(picture, key));
        EXPECT_TRUE(AreSame(picture, expected)) << i;
    }
}

TEST(TransformsTest, NeedAnImage) {
    CCelImg nothing, cel;
    ASSERT_TRUE(cel.CreateCel(4, 4, "a.bit"));
    EXPECT_EQ(FlipX(nothing).Message(), "Internal Error : cel/picture is not loaded in FlipX");
    EXPECT_EQ(FlipY(nothing).Message(), "Internal Error : cel/picture is not loaded in FlipX");
    EXPECT_EQ(Rotate(nothing, 90).Message(), "Internal Error : cel/picture is not loaded in Eraser");
    EXPECT_EQ(ColorKey(cel, {}).Message(), "Internal Error : no picture image loaded in CCelImg::ColorKey");
}
