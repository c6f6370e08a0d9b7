#include "image/paint/Despeckle.h"

#include <gtest/gtest.h>
#include <random>
#include <set>
#include <utility>
#include <vector>

namespace velmor {
namespace {

using Pixels = std::set<std::pair<int, int>>;

Pixels LinesOf(const CCelImg& cel) {
    Pixels lines;
    for (int y = 0; y < cel.Height(); ++y)
        for (int x = 0; x < cel.Width(); ++x)
            if (cel.IsLine(x, y))
                lines.emplace(x, y);
    return lines;
}

/// What is left when groups are grown pixel by pixel until nothing touches them, and how many have gone.
std::pair<Pixels, int> Plainly(Pixels lines, std::size_t mostPixels) {
    Pixels kept;
    int specks = 0;
    while (!lines.empty()) {
        Pixels group{lines.extract(lines.begin()).value()};
        for (bool grows = true; grows;) {
            grows = false;
            for (const auto& [x, y] : Pixels(group))
                for (int dy = -1; dy <= 1; ++dy)
                    for (int dx = -1; dx <= 1; ++dx)
                        if (lines.erase({x + dx, y + dy}) > 0)
                            grows = group.emplace(x + dx, y + dy).second;
        }
        if (group.size() > mostPixels)
            kept.merge(group);
        else
            ++specks;
    }
    return {kept, specks};
}

TEST(RemoveSpecks, TakesSmallGroupsAndLeavesTheRest) {
    std::mt19937 random(7);
    for (const int width : {2, 31, 32, 33, 70})
        for (const int most : {1, 2, 5, 100}) {
            SCOPED_TRACE(std::to_string(width) + " wide, " + std::to_string(most));
            CCelImg cel;
            ASSERT_TRUE(cel.CreateCel(width, 40, "x"));
            for (int y = 0; y < 40; ++y)
                for (int x = 0; x < width; ++x)
                    if (random() % 5 == 0) {
                        cel.SetLine(x, y, true);
                        cel.SetColorAt(x, y, {0, 0, 0, 255});
                    }
            const Pixels before = LinesOf(cel);
            const auto [kept, specks] = Plainly(before, static_cast<std::size_t>(most));
            EXPECT_EQ(RemoveSpecks(cel, most), specks);
            EXPECT_EQ(cel.IsModified(), specks > 0);
            EXPECT_EQ(LinesOf(cel), kept);
            for (const auto& [x, y] : before)
                EXPECT_EQ(cel.ColorAt(x, y).red, kept.contains({x, y}) ? 0 : 255);
            cel.SetModified(false);
        }
}

TEST(RemoveSpecks, LeavesThePaintThatIsAround) {
    constexpr CColor green{0, 200, 0, 255}, blue{200, 0, 0, 255}, white{255, 255, 255, 255}, black{0, 0, 0, 255};
    CCelImg cel;
    ASSERT_TRUE(cel.CreateCel(20, 10, "x"));
    for (int y = 0; y < 10; ++y)
        for (int x = 0; x < 10; ++x)
            cel.SetColorAt(x, y, x == 5 && y == 4 ? blue : green);
    for (const auto& [x, y] : {std::pair(4, 4), {4, 5}, {15, 5}, {0, 0}}) {
        cel.SetLine(x, y, true);
        cel.SetColorAt(x, y, black);
    }
    CCelImg bare = cel;
    EXPECT_EQ(RemoveSpecks(bare, 2), 3);
    EXPECT_EQ(bare.ColorAt(4, 4), white);
    EXPECT_EQ(RemoveSpecks(cel, 2, UnderSpecks::Surrounding), 3);
    for (const auto& [x, y] : {std::pair(4, 4), {4, 5}, {0, 0}})
        EXPECT_EQ(cel.ColorAt(x, y), green) << x << ", " << y;
    EXPECT_EQ(cel.ColorAt(15, 5), white);
    ASSERT_TRUE(cel.InvertCel());
    EXPECT_EQ(RemoveSpecks(cel, 200, UnderSpecks::Surrounding), 1) << "there is nothing around";
    EXPECT_EQ(cel.ColorAt(4, 4), white);
}

TEST(RemoveSpecks, LeavesPicturesAndNothingAsTheyAre) {
    CCelImg image;
    EXPECT_EQ(RemoveSpecks(image, 5), 0);
    ASSERT_TRUE(image.CreatePicture(4, 4, "x"));
    EXPECT_EQ(RemoveSpecks(image, 5), 0);
    ASSERT_TRUE(image.CreateCel(4, 4, "x"));
    image.SetLine(1, 1, true);
    EXPECT_EQ(RemoveSpecks(image, 0), 0);
    EXPECT_EQ(RemoveSpecks(image, -3), 0);
    EXPECT_FALSE(image.IsModified());
}

} // namespace
} // namespace velmor
