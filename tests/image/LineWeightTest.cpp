#include "image/clean/LineWeight.h"

#include "RandomImages.h"

#include <gtest/gtest.h>
#include <set>
#include <vector>

namespace velmor {
namespace {

/// The pixels, line or not, nearest to a place, and how far away squared they are.
std::pair<std::vector<CPoint>, int> Nearest(const CCelImg& cel, CPoint from, bool lines) {
    std::vector<CPoint> nearest;
    int least = 1 << 30;
    for (int y = 0; y < cel.Height(); ++y)
        for (int x = 0; x < cel.Width(); ++x) {
            const int distance = (x - from.x) * (x - from.x) + (y - from.y) * (y - from.y);
            if (cel.IsLine(x, y) != lines || distance > least)
                continue;
            if (distance < least)
                nearest.clear();
            least = distance;
            nearest.push_back({x, y});
        }
    return {nearest, least};
}

bool IsColorOfOne(const CCelImg& cel, const std::vector<CPoint>& places, CColor color) {
    return std::ranges::any_of(places, [&](CPoint at) { return cel.ColorAt(at.x, at.y) == color; });
}

/// Connected regions: of lines, joined at corners too, or of the rest, joined at sides.
int CountRegions(const CCelImg& cel, bool lines) {
    std::set<std::pair<int, int>> left;
    for (int y = 0; y < cel.Height(); ++y)
        for (int x = 0; x < cel.Width(); ++x)
            if (cel.IsLine(x, y) == lines)
                left.emplace(x, y);
    int count = 0;
    for (; !left.empty(); ++count) {
        std::vector<std::pair<int, int>> open{*left.begin()};
        left.erase(left.begin());
        while (!open.empty()) {
            const auto [x, y] = open.back();
            open.pop_back();
            for (int dy = -1; dy <= 1; ++dy)
                for (int dx = -1; dx <= 1; ++dx)
                    if ((lines || dx == 0 || dy == 0) && left.erase({x + dx, y + dy}) > 0)
                        open.emplace_back(x + dx, y + dy);
        }
    }
    return count;
}

/// Lines as wide as `weight` says, all over the image and out of it.
CCelImg Drawing(std::mt19937& random, int width, int height, int weight) {
    CCelImg cel = RandomCel(random, width, height);
    for (int i = 0; i < 3; ++i)
        DrawRandomLine(cel, random);
    if (weight > 0 && !ThickenLines(cel, weight))
        ADD_FAILURE();
    Sprinkle(cel, random, 3);
    Scramble(cel, random);
    cel.SetModified(false);
    return cel;
}

TEST(ThickenLines, ReachesAsFarAsItSaysWithTheNearestColour) {
    std::mt19937 random(21);
    for (const int width : {2, 31, 64, 65})
        for (const int pixels : {1, 2, 3, 5, 8}) {
            SCOPED_TRACE(std::to_string(width) + " wide, " + std::to_string(pixels));
            CCelImg cel = RandomCel(random, width, 33);
            Sprinkle(cel, random, 1);
            cel.SetLine(1, 5, true);
            const CCelImg before = cel;
            ASSERT_TRUE(ThickenLines(cel, pixels));
            EXPECT_TRUE(cel.IsModified());
            for (int y = 0; y < cel.Height(); ++y)
                for (int x = 0; x < width; ++x) {
                    const auto [nearest, distance] = Nearest(before, {x, y}, true);
                    ASSERT_EQ(cel.IsLine(x, y), distance <= pixels * pixels) << x << ", " << y;
                    const std::vector<CPoint> from = cel.IsLine(x, y) ? nearest : std::vector{CPoint{x, y}};
                    ASSERT_TRUE(IsColorOfOne(before, from, cel.ColorAt(x, y))) << x << ", " << y;
                }
        }
}

TEST(ThinLines, KeepsEveryLineWholeAndPaintsWhatItUncovers) {
    std::mt19937 random(22);
    for (const int weight : {0, 1, 2, 4})
        for (const int pixels : {1, 2, 8})
            for (const CSize size : {CSize{2, 2}, CSize{3, 40}, CSize{50, 40}, CSize{64, 21}}) {
                SCOPED_TRACE(std::to_string(size.width) + ", " + std::to_string(weight) + " by " +
                             std::to_string(pixels));
                const CCelImg before = Drawing(random, size.width, size.height, weight);
                CCelImg cel = before;
                ASSERT_TRUE(ThinLines(cel, pixels));
                EXPECT_EQ(CountRegions(cel, true), CountRegions(before, true));
                EXPECT_EQ(CountRegions(cel, false), CountRegions(before, false));
                bool hasChanged = false;
                for (int y = 0; y < size.height; ++y)
                    for (int x = 0; x < size.width; ++x) {
                        if (cel.IsLine(x, y) == before.IsLine(x, y)) {
                            ASSERT_EQ(cel.ColorAt(x, y), before.ColorAt(x, y));
                            continue;
                        }
                        hasChanged = true;
                        ASSERT_FALSE(cel.IsLine(x, y));
                        ASSERT_TRUE(IsColorOfOne(before, Nearest(before, {x, y}, false).first, cel.ColorAt(x, y)));
                    }
                EXPECT_EQ(cel.IsModified(), hasChanged);
            }
}

TEST(ThinLines, TakesALineDownToItsMiddleAndLetsItLeaveTheImage) {
    CCelImg cel;
    ASSERT_TRUE(cel.CreateCel(60, 40, "x"));
    for (int x = 0; x < 60; ++x)
        for (int y = 10; y < 17; ++y)
            cel.SetLine(x, y, true);
    for (int y = 25; y < 40; ++y)
        for (int x = 20; x < 25; ++x)
            cel.SetLine(x, y, true);
    for (int x = 0; x < 60; ++x)
        cel.SetLine(x, 0, true);
    CCelImg once = cel;
    ASSERT_TRUE(ThinLines(once, 1));
    ASSERT_TRUE(ThinLines(cel, 8));
    for (int x = 0; x < 60; ++x) {
        EXPECT_TRUE(cel.IsLine(x, 0)) << "along the border, " << x;
        EXPECT_TRUE(cel.IsLine(x, 13)) << x;
        EXPECT_FALSE(cel.IsLine(x, 12) || cel.IsLine(x, 14)) << x;
        EXPECT_EQ(once.IsLine(x, 11) && once.IsLine(x, 15), true) << x;
        EXPECT_EQ(once.IsLine(x, 10) || once.IsLine(x, 16), false) << x;
    }
    for (int y = 29; y < 40; ++y)
        EXPECT_TRUE(cel.IsLine(22, y)) << y;
    EXPECT_FALSE(cel.IsLine(21, 39) || cel.IsLine(23, 39));
    CCelImg again = cel;
    again.SetModified(false);
    ASSERT_TRUE(ThinLines(again, 8));
    EXPECT_FALSE(again.IsModified()) << "lines of one pixel stay";
}

TEST(LineWeight, IsOfCelsAlone) {
    CCelImg image;
    EXPECT_FALSE(ThickenLines(image, 1));
    EXPECT_FALSE(ThinLines(image, 1));
    ASSERT_TRUE(image.CreatePicture(4, 4, "x"));
    EXPECT_FALSE(ThickenLines(image, 1));
    EXPECT_FALSE(ThinLines(image, 1));
    ASSERT_TRUE(image.CreateCel(4, 4, "x"));
    EXPECT_TRUE(ThickenLines(image, 3));
    EXPECT_TRUE(ThinLines(image, 3));
    EXPECT_FALSE(image.IsModified()) << "there are no lines";
}

} // namespace
} // namespace velmor
