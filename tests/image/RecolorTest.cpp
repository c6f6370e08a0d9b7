#include "image/paint/Recolor.h"

#include "RandomImages.h"

#include <cstdlib>
#include <gtest/gtest.h>

using namespace velmor;

namespace {

bool IsNear(int a, int b, int tolerance) {
    return std::abs(a - b) <= tolerance;
}

bool IsFound(const CCelImg& image, int x, int y, const CRecoloring& recoloring) {
    const CColor color = image.ColorAt(x, y);
    const int tolerance = recoloring.tolerance;
    const bool isMeant = image.GetLoadState() == LoadState::Picture || recoloring.what == SelectWhat::Both ||
                         image.IsLine(x, y) == (recoloring.what == SelectWhat::Line);
    return isMeant && IsNear(color.red, recoloring.from.red, tolerance) &&
           IsNear(color.green, recoloring.from.green, tolerance) &&
           IsNear(color.blue, recoloring.from.blue, tolerance) &&
           (recoloring.keepsAlpha || IsNear(color.alpha, recoloring.from.alpha, tolerance));
}

/// Few colours near each other, so that some are found and some just not.
void PaintFewColors(CCelImg& image, std::mt19937& random) {
    for (const Channel channel : allChannels)
        for (std::uint8_t& byte : image.PlaneOf(channel))
            byte = static_cast<std::uint8_t>(RandomBetween(random, 0, 1) == 0 ? RandomBetween(random, 252, 255)
                                                                              : RandomBetween(random, 0, 3));
}

TEST(Recolor, GivesTheColorToThePixelsThatAPlainSearchFinds) {
    std::mt19937 random(5);
    for (int round = 0; round < 200; ++round) {
        CCelImg image = round % 3 == 0 ? RandomPicture(random, 40, 23) : RandomCel(random, 40, 23);
        if (image.GetLoadState() == LoadState::Cel)
            Sprinkle(image, random, 30);
        PaintFewColors(image, random);
        image.SetModified(false);
        const CRecoloring recoloring{image.ColorAt(7, 11), RandomColor(random), RandomBetween(random, 0, 4),
                                     static_cast<SelectWhat>(RandomBetween(random, 0, 2)),
                                     RandomBetween(random, 0, 1) == 0};
        CCelImg expected = image;
        std::int64_t count = 0;
        CRect changed;
        for (int y = 0; y < image.Height(); ++y)
            for (int x = 0; x < image.Width(); ++x)
                if (IsFound(image, x, y, recoloring)) {
                    CColor color = recoloring.to;
                    if (recoloring.keepsAlpha)
                        color.alpha = image.ColorAt(x, y).alpha;
                    expected.SetColorAt(x, y, color);
                    expected.SetModified(true);
                    changed = Union(changed, {x, y, x + 1, y + 1});
                    ++count;
                }
        EXPECT_EQ(CountColor(image, recoloring), count);
        const CPaintResult result = Recolor(image, recoloring);
        EXPECT_TRUE(result.status);
        EXPECT_EQ(result.changed, changed);
        EXPECT_TRUE(AreSame(image, expected)) << round;
    }
}

} // namespace
