#include "views/ViewMapping.h"
#include "RandomImages.h"

#include <gtest/gtest.h>

namespace velmor {
namespace {

TEST(ViewMappingTest, SmallZoomLevelsDivide) {
    CViewMapping mapping{{768, 576}, {100, 100}, CZoomLevel(0), {}};
    EXPECT_EQ(mapping.Displayed(), (CSize{384, 288}));
    EXPECT_EQ(mapping.ViewToBuffer({10, 20}), (CPoint{20, 576 - 40}));
    mapping.zoom = CZoomLevel(-2);
    EXPECT_EQ(mapping.Displayed(), (CSize{192, 144}));
    EXPECT_EQ(mapping.MostScroll(), (CPoint{92, 44}));
}

TEST(ViewMappingTest, RowsOfToolsStandOneAboveThoseShown) {
    const CViewMapping mapping{{10, 8}, {10, 8}, CZoomLevel(1), {}};
    EXPECT_EQ(mapping.ViewToBuffer({0, 0}), (CPoint{0, 8}));
    EXPECT_EQ(mapping.ViewToBuffer({9, 7}), (CPoint{9, 1}));
    EXPECT_EQ(mapping.PixelShownAt({0, 0}), (CPoint{0, 7}));
    EXPECT_EQ(mapping.PixelShownAt({9, 7}), (CPoint{9, 0}));
}

TEST(ViewMappingTest, MarginsLieOutside) {
    const CViewMapping mapping{{10, 8}, {101, 90}, CZoomLevel(4), {}};
    EXPECT_EQ(mapping.Origin(), (CPoint{30, 29}));
    EXPECT_EQ(mapping.ViewToBuffer({29, 29}), (CPoint{-1, 8}));
    EXPECT_EQ(mapping.ViewToBuffer({30, 28}), (CPoint{0, 9}));
    EXPECT_EQ(mapping.ViewToBuffer({70, 33}), (CPoint{10, 7}));
    EXPECT_EQ(mapping.PixelShownAt({29, 29}), std::nullopt);
    EXPECT_EQ(mapping.PixelShownAt({70, 33}), std::nullopt);
    EXPECT_EQ(mapping.PixelShownAt({69, 60}), (CPoint{9, 0}));
}

CViewTurn RandomTurn(std::mt19937& random) {
    const int degrees =
        RandomBetween(random, 0, 1) == 0 ? 90 * RandomBetween(random, 0, 3) : RandomBetween(random, 0, 359);
    return CViewTurn{static_cast<double>(degrees), RandomBetween(random, 0, 1) == 1};
}

CViewMapping RandomMapping(std::mt19937& random, const CViewTurn& turn) {
    const CZoomLevel zoom = RandomBetween(random, 0, 2) == 0
                                ? CZoomLevel::OfFactor(RandomBetween(random, 20, 500) / 100.0)
                                : CZoomLevel(RandomBetween(random, -4, 5));
    CViewMapping mapping{{RandomBetween(random, 2, 60), RandomBetween(random, 2, 60)}, {80, 70}, zoom, {}, turn};
    const CPoint most = mapping.MostScroll();
    mapping.scroll = {RandomBetween(random, 0, most.x), RandomBetween(random, 0, most.y)};
    return mapping;
}

TEST(ViewMappingTest, ARectangleOfPixelsIsWhereTheyAreShown) {
    std::mt19937 random(3);
    for (int round = 0; round < 400; ++round) {
        const bool isTurned = round >= 200;
        const CViewMapping mapping = RandomMapping(random, isTurned ? RandomTurn(random) : CViewTurn());
        const int x = RandomBetween(random, 0, mapping.image.width - 1);
        const int y = RandomBetween(random, 0, mapping.image.height - 1);
        const CRect pixels{x, y, RandomBetween(random, x + 1, mapping.image.width),
                           RandomBetween(random, y + 1, mapping.image.height)};
        CRect shown;
        for (int row = 0; row < mapping.client.height; ++row)
            for (int column = 0; column < mapping.client.width; ++column) {
                const auto pixel = mapping.PixelShownAt({column, row});
                if (pixel && pixel->x >= pixels.x && pixel->x < pixels.endX && pixel->y >= pixels.y &&
                    pixel->y < pixels.endY)
                    shown = Union(shown, {column, row, column + 1, row + 1});
            }
        const CRect told = mapping.ToClient(pixels);
        EXPECT_EQ(Intersection(shown, told), shown);
        if (isTurned)
            continue; // what stands around a turned rectangle is larger
        const CRect near{shown.x - 1, shown.y - 1, shown.endX + 1, shown.endY + 1};
        const CRect inClient = Intersection(told, {0, 0, 80, 70});
        EXPECT_TRUE(shown.IsEmpty() || Intersection(near, inClient) == inClient) << "much too large";
    }
}

TEST(ViewMappingTest, ATurnedViewShowsWhereItPaints) {
    std::mt19937 random(4);
    for (int round = 0; round < 300; ++round) {
        const CViewMapping mapping = RandomMapping(random, RandomTurn(random));
        const CPoint at{RandomBetween(random, 0, 79), RandomBetween(random, 0, 69)};
        const CRealPoint centre{at.x + 0.5, at.y + 0.5};
        const CRealPoint back = mapping.ToClient(mapping.ToImage(centre));
        EXPECT_NEAR(back.x, centre.x, 1e-9);
        EXPECT_NEAR(back.y, centre.y, 1e-9);
        if (const std::optional<CPoint> shown = mapping.PixelShownAt(at)) {
            const int aboveIt = shown->y + 1;
            EXPECT_EQ(mapping.ViewToBuffer(at), (CPoint{shown->x, aboveIt})) << "however turned";
        }
        const CSize displayed = mapping.Displayed();
        const CRealPoint corner = mapping.ToClient(CRealPoint{});
        EXPECT_GE(corner.x, mapping.Origin().x - 1.001);
        EXPECT_LE(corner.x, mapping.Origin().x + displayed.width + 1.001);
    }
}

TEST(ViewMappingTest, AMirrorAndQuarterTurnsMoveWholePixels) {
    CViewMapping mapping{{10, 8}, {10, 8}, CZoomLevel(1), {}, {0, true}};
    EXPECT_EQ(mapping.PixelShownAt({0, 0}), (CPoint{9, 7}));
    EXPECT_EQ(mapping.PixelShownAt({2, 5}), (CPoint{7, 2}));
    mapping.turn = CViewTurn().TurnedBy(90);
    mapping.client = mapping.Displayed();
    EXPECT_EQ(mapping.client, (CSize{8, 10}));
    EXPECT_EQ(mapping.PixelShownAt({7, 0}), (CPoint{0, 7})) << "the top left corner is at the top right";
    EXPECT_EQ(mapping.PixelShownAt({0, 9}), (CPoint{9, 0}));
    EXPECT_EQ(CViewTurn().TurnedBy(30).Mirrored(), (CViewTurn{330, true}))
        << "the screen is mirrored, not the paper";
    EXPECT_EQ(CViewTurn().TurnedBy(-90).TurnedBy(90), CViewTurn());
}

TEST(ViewMappingTest, TurningKeepsTheCentreInPlace) {
    const CViewMapping before{{400, 300}, {100, 100}, CZoomLevel(2), {300, 200}, {}};
    CViewMapping after = before;
    after.turn = before.turn.TurnedBy(37);
    after.scroll = after.ScrollKeepingCentre(before);
    const CRealPoint was = before.ToImage({50, 50});
    const CRealPoint is = after.ToImage({50, 50});
    EXPECT_NEAR(is.x, was.x, 0.5);
    EXPECT_NEAR(is.y, was.y, 0.5);
}

TEST(ViewMappingTest, AScrollBarMayNeedTheOther) {
    const CSize room{100, 80}, bars{14, 15};
    EXPECT_EQ(ClientBesideBars({100, 80}, room, bars), room);
    EXPECT_EQ(ClientBesideBars({101, 65}, room, bars), (CSize{100, 65}));
    EXPECT_EQ(ClientBesideBars({101, 66}, room, bars), (CSize{86, 65}));
    EXPECT_EQ(ClientBesideBars({86, 81}, room, bars), (CSize{86, 80}));
    EXPECT_EQ(ClientBesideBars({87, 81}, room, bars), (CSize{86, 65}));
}

TEST(ViewMappingTest, ZoomingKeepsTheAnchorWhileTheImageCanBeScrolled) {
    const CViewMapping before{{400, 300}, {100, 100}, CZoomLevel(2), {200, 150}};
    CViewMapping after = before;
    after.zoom = before.zoom.In();
    after.scroll = after.ScrollKeeping({30, 70}, before);
    EXPECT_EQ(after.ViewToBuffer({30, 70}), before.ViewToBuffer({30, 70}));
    after.zoom = CZoomLevel(-3);
    EXPECT_EQ(after.ScrollKeeping({30, 70}, before), (CPoint{0, 0}));
    // From an image in the middle of a larger client area.
    const CViewMapping small{{90, 90}, {100, 100}, CZoomLevel(1), {}};
    CViewMapping large = small;
    large.zoom = CZoomLevel(4);
    large.scroll = large.ScrollKeeping({50, 50}, small);
    EXPECT_EQ(large.ViewToBuffer({50, 50}), small.ViewToBuffer({50, 50}));
}

} // namespace
} // namespace velmor
