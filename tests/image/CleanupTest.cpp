#include "image/clean/Cleanup.h"

#include "PunchedPage.h"
#include "image/clean/LineWeight.h"
#include "image/paint/Despeckle.h"

#include <gtest/gtest.h>

namespace velmor::testing {
namespace {

constexpr CColor green{0, 200, 0, 255};

/// Holes, painted paper with a line across, and a speck of two pixels.
CCelImg Drawing(const CPunchedPage& page) {
    CCelImg cel = page.Draw();
    for (int y = 200; y < 600; ++y)
        for (int x = 200; x < 1300; ++x)
            cel.SetColorAt(x, y, green);
    for (int x = 200; x < 1300; ++x)
        for (int y = 400; y < 403; ++y)
            CPunchedPage::SetBlack(cel, x, y);
    CPunchedPage::SetBlack(cel, 700, 500);
    CPunchedPage::SetBlack(cel, 701, 500);
    cel.SetModified(false);
    return cel;
}

TEST(CleanUp, DoesNothingThatItIsNotTold) {
    const CCelImg before = Drawing({});
    CCelImg cel = before;
    CCleanedUp done;
    ASSERT_TRUE(CleanUp(cel, {}, {}, done));
    EXPECT_TRUE(AreSame(cel, before));
    EXPECT_FALSE(done.pegs.has_value());
    CCelImg nothing;
    EXPECT_FALSE(CleanUp(nothing, {}, {}, done));
}

TEST(CleanUp, DoesAllOfItInOneGo) {
    CPunchedPage page;
    page.degrees = 2;
    CCelImg cel = Drawing(page);
    CCleanup cleanup;
    cleanup.specks = 2;
    cleanup.registers = cleanup.erasesPegs = true;
    cleanup.weight = 2;
    CCleanedUp done;
    ASSERT_TRUE(CleanUp(cel, cleanup, {}, done));
    EXPECT_EQ(done.specks, 1);
    EXPECT_TRUE(done.registered);
    ASSERT_TRUE(done.pegs.has_value());
    EXPECT_NEAR(done.degrees, -2, 0.05);
    ASSERT_TRUE(done.placed.has_value());
    EXPECT_EQ(done.placed->x, 787);
    EXPECT_TRUE(cel.IsModified());
    // The middle of the row lies where a straight page has it, so a place of the drawing can be foretold.
    const double turn = -2 * std::numbers::pi / 180;
    const double x = 787 + (600 - page.x) * std::cos(turn) - (401 - page.y) * std::sin(turn);
    const double y = 1259 - 60 + (600 - page.x) * std::sin(turn) + (401 - page.y) * std::cos(turn);
    EXPECT_TRUE(cel.IsLine(static_cast<int>(std::lround(x)), static_cast<int>(std::lround(y))));
    EXPECT_TRUE(cel.IsLine(static_cast<int>(std::lround(x)), static_cast<int>(std::lround(y)) + 2));
    EXPECT_EQ(cel.ColorAt(static_cast<int>(std::lround(x)), static_cast<int>(std::lround(y)) + 20), green);
    CPegs pegs;
    EXPECT_FALSE(FindPegs(cel, {}, pegs)) << "they are erased";
}

TEST(CleanUp, PutsOnTheReferenceAndSaysWhyNot) {
    CPunchedPage page;
    CCelImg cel = Drawing(page);
    CPegReference reference{{}, {1500, 1200}};
    ASSERT_TRUE(FindPegs(cel, {}, reference.pegs));
    reference.pegs.x = 700;
    reference.pegs.y = 1100;
    reference.pegs.degrees = 1;
    CCleanup cleanup;
    cleanup.registers = true;
    CCleanedUp done;
    CCelImg put = cel;
    ASSERT_TRUE(CleanUp(put, cleanup, reference, done));
    EXPECT_EQ(put.Width(), 1500);
    CPegs pegs;
    ASSERT_TRUE(FindPegs(put, {}, pegs));
    EXPECT_NEAR(pegs.x, 700, 0.5);
    EXPECT_NEAR(pegs.y, 1100, 0.5);
    EXPECT_NEAR(pegs.degrees, 1, 0.05);
    cleanup.straightens = true;
    ASSERT_TRUE(CleanUp(cel, cleanup, reference, done));
    ASSERT_TRUE(FindPegs(cel, {}, pegs));
    EXPECT_NEAR(pegs.degrees, 0, 0.05);

    CCelImg bare;
    ASSERT_TRUE(bare.CreateCel(900, 700, "x"));
    cleanup.straightens = false;
    const CCelImg before = bare;
    ASSERT_TRUE(CleanUp(bare, cleanup, reference, done));
    EXPECT_FALSE(done.registered);
    EXPECT_TRUE(AreSame(bare, before));
    reference.pegs.areAtTop = false;
    CCelImg other = Drawing(page);
    ASSERT_TRUE(CleanUp(other, cleanup, reference, done));
    EXPECT_FALSE(done.registered) << "they are at the other edge";
    EXPECT_EQ(other.Width(), page.size.width);
}

TEST(CleanUp, StraightensByTheFrameWhereThereAreNoPegs) {
    CCelImg cel;
    ASSERT_TRUE(cel.CreateCel(800, 600, "x"));
    for (int x = 100; x < 700; ++x)
        for (int y = 0; y < 3; ++y)
            cel.SetLine(x, 500 + y + (x - 100) / 30, true); // rises by 1 in 30
    CCleanup cleanup;
    cleanup.straightens = true;
    CCleanedUp done;
    ASSERT_TRUE(CleanUp(cel, cleanup, {}, done));
    EXPECT_NEAR(done.degrees, -std::atan(1.0 / 30) * 180 / std::numbers::pi, 0.05);
    int least = 600, most = 0;
    for (int y = 0; y < 600; ++y)
        for (int x = 200; x < 600; ++x)
            if (cel.IsLine(x, y)) {
                least = std::min(least, y);
                most = std::max(most, y);
            }
    EXPECT_LE(most - least, 4);
}

TEST(CleanUp, MakesAPictureBlackAndWhiteOnlyWithAThreshold) {
    CCelImg picture;
    ASSERT_TRUE(picture.CreatePicture(40, 30, "x"));
    for (int y = 0; y < 30; ++y)
        for (int x = 0; x < 40; ++x) {
            const auto grey = static_cast<std::uint8_t>(y == 10 ? 100 : 180);
            picture.SetColorAt(x, y, {grey, grey, grey, 255});
        }
    picture.SetColorAt(20, 20, {0, 0, 0, 255});
    picture.SetColorAt(5, 5, {0, 0, 0, 0});
    picture.SetModified(false);
    const CCelImg before = picture;
    CCleanup cleanup;
    cleanup.specks = 1;
    cleanup.weight = 1;
    CCleanedUp done;
    ASSERT_TRUE(CleanUp(picture, cleanup, {}, done));
    EXPECT_TRUE(AreSame(picture, before)) << "there are no lines";
    cleanup.threshold = 128;
    ASSERT_TRUE(CleanUp(picture, cleanup, {}, done));
    EXPECT_EQ(picture.GetLoadState(), LoadState::Picture);
    EXPECT_EQ(done.specks, 1);
    for (int y = 0; y < 30; ++y)
        for (int x = 0; x < 40; ++x)
            ASSERT_EQ(picture.ColorAt(x, y),
                      std::abs(y - 10) <= 1 ? (CColor{0, 0, 0, 255}) : (CColor{255, 255, 255, 255}))
                << x << ", " << y;
}

} // namespace
} // namespace velmor::testing
