#include "PunchedPage.h"
#include "image/clean/PageTurn.h"
#include "image/transform/Transforms.h"

#include <gtest/gtest.h>

namespace velmor::testing {
namespace {

using Holes = CPunchedPage::Holes;

void ExpectFound(const CCelImg& scan, const CPunchedPage& page, std::optional<double> dpi = {}) {
    CPegs pegs;
    const CStatus found = FindPegs(scan, {128, dpi}, pegs);
    ASSERT_TRUE(found) << found.Message();
    EXPECT_NEAR(pegs.x, page.x, 0.5);
    EXPECT_NEAR(pegs.y, page.y, 0.5);
    EXPECT_NEAR(pegs.degrees, page.degrees, 0.05);
    EXPECT_NEAR(pegs.spacing, 4 * page.dpi, 1);
    EXPECT_EQ(pegs.areAtTop, page.y > page.size.height / 2.0);
    EXPECT_GT(pegs.confidence, 0.3);
    EXPECT_LE(pegs.confidence, 1);
}

/// Anywhere near the top or the bottom, as a hand lays it.
CPunchedPage RandomPage(std::mt19937& random) {
    CPunchedPage page;
    page.x += RandomBetween(random, -300, 300) / 10.0;
    page.degrees = RandomBetween(random, -5000, 5000) / 1000.0;
    const double fromEdge = 110 + RandomBetween(random, -300, 300) / 10.0;
    page.y = random() % 2 == 0 ? fromEdge : page.size.height - fromEdge;
    page.slotInches = random() % 2 == 0 ? 0.5 : 0.4375;
    page.areRounded = random() % 2 == 0;
    return page;
}

TEST(FindPegs, FindsCleanHolesOfEveryLookAndTurn) {
    std::mt19937 random(11);
    for (const Holes holes : {Holes::Dark, Holes::Light, Holes::Outlined})
        for (int i = 0; i < 8; ++i) {
            CPunchedPage page = RandomPage(random);
            page.holes = holes;
            SCOPED_TRACE(std::to_string(static_cast<int>(holes)) + " at " + std::to_string(page.degrees));
            ExpectFound(page.Draw(), page, i % 2 == 0 ? std::optional(150.0) : std::nullopt);
        }
}

TEST(FindPegs, IsNotLedAstrayByNoiseDirtAndTears) {
    for (unsigned seed = 0; seed < 24; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        CPunchedPage page = RandomPage(random);
        page.holes = seed % 3 == 0 ? Holes::Outlined : Holes::Dark;
        CCelImg scan = DirtyScan(page, random, 60);
        // Both at one side, so that the middles of the regions move.
        if (page.holes == Holes::Dark)
            Tear(scan, page.x + 600, page.y, 18, 12, true);
        if (page.holes == Holes::Dark && seed % 2 == 0)
            Tear(scan, page.x + 6, page.y, 30, 14, true);
        AddNoise(scan, random, 200);
        ExpectFound(scan, page);
    }
}

TEST(FindPegs, DoesWithTwoHolesWhereTheThirdHasRunTogetherWithTheEdge) {
    CPunchedPage page;
    page.degrees = -2.5;
    for (const double along : {-600.0, 0.0}) {
        SCOPED_TRACE(along);
        CCelImg scan = page.Draw();
        for (int y = static_cast<int>(page.y); y < page.size.height; ++y)
            for (int x = -8; x <= 8; ++x)
                scan.SetLine(static_cast<int>(page.x + along) + x, y, true);
        for (int y = page.size.height - 6; y < page.size.height; ++y)
            for (int x = 0; x < page.size.width; ++x)
                scan.SetLine(x, y, true);
        ExpectFound(scan, page);
    }
}

TEST(FindPegs, RefusesPagesWithoutThem) {
    std::mt19937 random(5);
    CPegs pegs;
    CPunchedPage page;
    page.y = 630; // in the middle of the page
    EXPECT_FALSE(FindPegs(page.Draw(), {}, pegs));
    page.y = 1140;
    EXPECT_FALSE(FindPegs(page.Draw(), {128, 300.0}, pegs)) << "they are too near for this resolution";
    page.degrees = 25;
    page.y = 800;
    EXPECT_FALSE(FindPegs(page.Draw(), {}, pegs));
    for (int i = 0; i < 6; ++i) {
        CCelImg scan;
        ASSERT_TRUE(scan.CreateCel(1200, 900, "x"));
        AddDirt(scan, random, 150);
        EXPECT_FALSE(FindPegs(scan, {}, pegs)) << i;
    }
    for (const CSize size : {CSize{2, 2}, CSize{2, 700}, CSize{900, 2}, CSize{33, 31}}) {
        CCelImg scan;
        ASSERT_TRUE(scan.CreateCel(size.width, size.height, "x"));
        EXPECT_FALSE(FindPegs(scan, {}, pegs));
        Sprinkle(scan, random, 40);
        EXPECT_FALSE(FindPegs(scan, {}, pegs));
        ErasePegs(scan, page.x > 0 ? CPegs{1e6, -1e6, 3, 600, 75, 19, 38, false, 1} : pegs);
    }
    CCelImg nothing;
    EXPECT_FALSE(FindPegs(nothing, {}, pegs));
}

TEST(FindPegs, LooksAtPicturesByTheirGreyAndAtLargePagesInTheSmall) {
    CPunchedPage page;
    page.degrees = 1.5;
    const CCelImg cel = page.Draw();
    CCelImg picture;
    ASSERT_TRUE(picture.CreatePicture(page.size.width, page.size.height, "x.rgba"));
    for (int y = 0; y < page.size.height; ++y)
        for (int x = 0; x < page.size.width; ++x)
            picture.SetColorAt(x, y, cel.IsLine(x, y) ? CColor{90, 90, 90, 255} : CColor{200, 200, 200, 255});
    ExpectFound(picture, page);
    CPegs pegs;
    EXPECT_FALSE(FindPegs(picture, {80, {}}, pegs)) << "nothing is so dark";
    CPunchedPage large;
    large.size = {5600, 3000};
    large.dpi = 600;
    large.x = 2790.25;
    large.y = 400.5;
    ExpectFound(large.Draw(), large);
}

TEST(PutOnPegs, BringsAPageOntoAnother) {
    std::mt19937 random(3);
    CPunchedPage reference, page;
    page.x += 12.3;
    page.y -= 7.8;
    page.degrees = 3.7;
    CPegs referencePegs, pegs;
    ASSERT_TRUE(FindPegs(reference.Draw(), {}, referencePegs));
    CCelImg scan = page.Draw();
    ASSERT_TRUE(FindPegs(scan, {}, pegs));
    ASSERT_TRUE(PutOnPegs(scan, pegs, referencePegs, {1600, 1250}));
    EXPECT_EQ(scan.Width(), 1600);
    EXPECT_EQ(scan.GetLoadState(), LoadState::Cel);
    reference.size = {1600, 1250};
    ExpectFound(scan, reference);
    int different = 0;
    const CCelImg expected = reference.Draw();
    for (int y = 0; y < 1250; ++y)
        for (int x = 0; x < 1600; ++x)
            if (std::abs(reference.DistanceFromHoles(x, y)) > 1.5)
                different += expected.IsLine(x, y) != scan.IsLine(x, y) ? 1 : 0;
    EXPECT_EQ(different, 0);

    ErasePegs(scan, referencePegs);
    for (int y = 0; y < 1250; ++y)
        for (int x = 0; x < 1600; ++x)
            ASSERT_FALSE(scan.IsLine(x, y)) << x << ", " << y;
    pegs.areAtTop = false;
    EXPECT_FALSE(PutOnPegs(scan, pegs, referencePegs, {1600, 1250}));
    pegs.areAtTop = true;
    pegs.spacing *= 2;
    EXPECT_FALSE(PutOnPegs(scan, pegs, referencePegs, {1600, 1250}));
}

TEST(FindPageTurn, IsThatOfTheFrameLines) {
    std::mt19937 random(8);
    for (const double degrees : {-9.0, -2.37, -0.04, 0.0, 0.5, 3.3, 8.8}) {
        SCOPED_TRACE(degrees);
        CCelImg page;
        ASSERT_TRUE(page.CreateCel(900, 700, "x"));
        for (int y = 150; y < 550; ++y)
            for (int x = 150; x < 750; ++x)
                if (y < 153 || y > 546 || x < 153 || x > 746)
                    page.SetLine(x, y, true);
        for (int i = 0; i < 4; ++i)
            DrawRandomLine(page, random);
        ASSERT_TRUE(TurnAndMove(page, {449.5, 349.5, 449.5, 349.5, degrees, {900, 700}}));
        AddNoise(page, random, 300);
        const std::optional<double> turn = FindPageTurn(page, 128);
        ASSERT_TRUE(turn.has_value());
        EXPECT_NEAR(*turn, degrees, 0.05);
    }
    CCelImg doodles;
    ASSERT_TRUE(doodles.CreateCel(900, 700, "x"));
    EXPECT_FALSE(FindPageTurn(doodles, 128).has_value());
    AddNoise(doodles, random, 50);
    EXPECT_FALSE(FindPageTurn(doodles, 128).has_value());
}

} // namespace
} // namespace velmor::testing
