#include "xsheet/Spacing.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

using namespace velmor;

namespace {

double Distance(CRealPoint a, CRealPoint b) {
    return std::hypot(b.x - a.x, b.y - a.y);
}

// Positions on a quarter of a circle of radius 100.
std::vector<CRealPoint> Arc(int count) {
    std::vector<CRealPoint> points;
    for (int i = 0; i < count; ++i) {
        const double angle = std::numbers::pi / 2 * i / (count - 1);
        points.push_back({100 * std::cos(angle), 100 * std::sin(angle)});
    }
    return points;
}

std::vector<CRealPoint> Line(std::initializer_list<double> places) {
    std::vector<CRealPoint> points;
    for (const double place : places)
        points.push_back({place, 2 * place});
    return points;
}

} // namespace

TEST(PathLine, GoesThroughItsPointsAndMeasuresItself) {
    const std::vector<CRealPoint> points = Arc(5);
    const CPathLine line(points);
    EXPECT_NEAR(line.Length(), 50 * std::numbers::pi, 1);
    for (std::size_t i = 0; i < points.size(); ++i) {
        EXPECT_NEAR(Distance(line.At(line.LengthTo(i)), points[i]), 0, 1e-9) << i;
        EXPECT_NEAR(line.Nearest(points[i]), line.LengthTo(i), 1e-6) << i;
    }
    EXPECT_NEAR(Distance(line.At(line.Length() * 0.4), {0, 0}), 100, 1) << "round, not from point to point";
    EXPECT_EQ(line.At(-5), points.front());
    EXPECT_EQ(line.At(1e9), points.back());
}

TEST(PathLine, HoldsAndUnevenPointsMakeNoLoops) {
    const CPathLine line(Line({0, 0, 0, 1, 1, 50, 50, 51, 100, 100}));
    EXPECT_NEAR(line.Length(), 100 * std::sqrt(5), 1e-6);
    EXPECT_EQ(line.LengthTo(2), 0);
    EXPECT_EQ(line.LengthTo(5), line.LengthTo(6));
    const CPathLine spot(Line({7, 7, 7}));
    EXPECT_EQ(spot.Length(), 0);
    EXPECT_EQ(spot.At(3), (CRealPoint{7, 14}));
}

TEST(Spacing, ADraggedTickTakesTheOthersAlongThePath) {
    const std::vector<CRealPoint> even = Line({0, 25, 50, 75, 100});
    const CSpacing spacing(even);
    const std::vector<CRealPoint> slowOut = spacing.Dragged(2, {25, 50}, false);
    const double parts[] = {0, 10, 25, 50, 100};
    for (std::size_t i = 0; i < 5; ++i)
        EXPECT_NEAR(Distance(slowOut[i], {parts[i], 2 * parts[i]}), 0, 1e-6) << i;
    const std::vector<CRealPoint> slowIn = spacing.Dragged(2, {75, 150}, false);
    for (std::size_t i = 0; i < 5; ++i)
        EXPECT_NEAR(slowIn[i].x, 100 - parts[4 - i], 1e-6) << "the same from the other end";
    const std::vector<CRealPoint> back = CSpacing(slowOut).Dragged(2, even[2], false);
    for (std::size_t i = 0; i < 5; ++i)
        EXPECT_NEAR(Distance(back[i], even[i]), 0, 1e-6) << "dragged back " << i;
    // Beside the path counts what is nearest on it, beyond an end stops short of it.
    EXPECT_NEAR(Distance(spacing.Dragged(2, {25 + 20, 50 - 10}, false)[2], {25, 50}), 0, 1e-6);
    EXPECT_LT(spacing.Dragged(1, {-500, -500}, false)[1].x, spacing.Dragged(1, {-500, -500}, false)[2].x);
    EXPECT_GT(spacing.Dragged(1, {-500, -500}, false)[1].x, 0);
    EXPECT_EQ(spacing.Dragged(0, {30, 60}, false), even) << "a key";
}

TEST(Spacing, ATickAloneLeavesTheOthersAndAHoldAtAKeyGoesAlone) {
    const std::vector<CRealPoint> even = Line({0, 25, 50, 75, 100});
    const std::vector<CRealPoint> alone = CSpacing(even).Dragged(2, {30, 60}, true);
    EXPECT_NEAR(alone[2].x, 30, 1e-6);
    for (const std::size_t i : {0U, 1U, 3U, 4U})
        EXPECT_EQ(alone[i], even[i]);
    const std::vector<CRealPoint> held = Line({0, 0, 50, 100});
    const std::vector<CRealPoint> lifted = CSpacing(held).Dragged(1, {20, 40}, false);
    EXPECT_NEAR(lifted[1].x, 20, 1e-6);
    EXPECT_EQ(lifted[2], held[2]);
    const std::vector<CRealPoint> still = Line({4, 4, 4});
    EXPECT_EQ(CSpacing(still).Dragged(1, {20, 40}, false), still) << "no path";
}

TEST(Spacing, DraggingToAndFroStaysOnThePath) {
    std::vector<CRealPoint> positions = Arc(9);
    for (int round = 0; round < 20; ++round)
        positions = CSpacing(positions).Dragged(4, round % 2 == 0 ? CRealPoint{95, 31} : CRealPoint{31, 95}, false);
    for (const CRealPoint& position : positions)
        EXPECT_NEAR(Distance(position, {0, 0}), 100, 5); // of which each drag costs a little
}

TEST(Spacing, ADrawnPathIsSpreadAtThePaceAndMeetsItsKeys) {
    const std::vector<CRealPoint> drawn = Arc(60);
    const auto spread = [&](CInbetweenPace pace) {
        return SpreadAlong(drawn, {104, 0}, {0, 97}, {1500, 1508}, pace);
    };
    const std::vector<CRealPoint> even = spread(InbetweenType::Constant); // which has no pace of its own
    ASSERT_EQ(even.size(), 9U);
    EXPECT_EQ(even.front(), (CRealPoint{104, 0}));
    EXPECT_EQ(even.back(), (CRealPoint{0, 97}));
    for (std::size_t i = 1; i < even.size(); ++i) {
        EXPECT_NEAR(Distance(even[i - 1], even[i]), Distance(even[0], even[1]), 1.5) << i;
        EXPECT_NEAR(Distance(even[i], {0, 0}), 100, 5) << i;
    }
    const std::vector<CRealPoint> slow = spread({InbetweenType::Drawn, {{0.5, 0}, {0.5, 1}}});
    EXPECT_LT(Distance(slow[0], slow[1]), Distance(slow[3], slow[4]) / 3);
    EXPECT_LT(Distance(slow[7], slow[8]), Distance(slow[4], slow[5]) / 3);
    const std::vector<CRealPoint> twos = spread({InbetweenType::Linear, {}, 2});
    EXPECT_EQ(twos[0], twos[1]);
    EXPECT_EQ(twos[2], twos[3]);
    EXPECT_NE(twos[3], twos[4]);
}

TEST(Spacing, ATrembleIsTakenOutOfADrawnLine) {
    std::vector<CRealPoint> trembling;
    for (int x = 0; x <= 200; ++x)
        trembling.push_back({static_cast<double>(x), x % 2 == 0 ? 1.0 : -1.0});
    const std::vector<CRealPoint> smooth = Smoothed(trembling);
    EXPECT_EQ(smooth.front(), trembling.front());
    EXPECT_EQ(smooth.back(), trembling.back());
    for (std::size_t i = 4; i + 4 < smooth.size(); ++i)
        EXPECT_LT(std::abs(smooth[i].y), 0.7) << i;
    EXPECT_TRUE(Smoothed({}).empty());
}
