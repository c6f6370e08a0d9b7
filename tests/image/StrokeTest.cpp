#include "RandomImages.h"
#include "image/stroke/PixelWay.h"
#include "image/stroke/PressureCurve.h"
#include "image/stroke/RoundTip.h"
#include "image/stroke/Shapes.h"
#include "image/stroke/SmoothWay.h"
#include "image/stroke/Stabilizer.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace velmor::testing {
namespace {

double Random(std::mt19937& random, double from, double to) {
    return std::uniform_real_distribution(from, to)(random);
}

CRealPoint RandomPlace(std::mt19937& random) {
    return {Random(random, -15, 75), Random(random, -15, 65)};
}

/// The way of a hand that draws quickly and trembles.
std::vector<CStrokePoint> RandomWay(std::mt19937& random, int count) {
    std::vector<CStrokePoint> way{{RandomPlace(random), Random(random, 0, 1)}};
    while (static_cast<int>(way.size()) < count)
        way.push_back({{way.back().at.x + Random(random, -9, 12), way.back().at.y + Random(random, -9, 9)},
                       Random(random, 0, 1)});
    return way;
}

TEST(StrokeTest, APressureCurveHasOneValueForEachPressure) {
    std::mt19937 random(1);
    for (double pressure = 0; pressure <= 1; pressure += 0.05)
        EXPECT_NEAR(CPressureCurve().Of(pressure), pressure, 1e-9) << "as it is made it changes nothing";
    for (int round = 0; round < 100; ++round) {
        const CPressureCurve curve{{Random(random, 0, 1), Random(random, 0, 1)},
                                   {Random(random, 0, 1), Random(random, 0, 1)}};
        const double t = Random(random, 0, 1), rest = 1 - t;
        const auto plain = [&](double a, double b) {
            return 3 * t * rest * rest * a + 3 * t * t * rest * b + t * t * t;
        };
        EXPECT_NEAR(curve.Of(plain(curve.first.x, curve.second.x)), plain(curve.first.y, curve.second.y), 1e-4);
        EXPECT_NEAR(curve.Of(-3), 0, 1e-9);
        EXPECT_NEAR(curve.Of(7), 1, 1e-9);
    }
}

TEST(StrokeTest, AStringPullsTheLineAndEveryLineEndsAtThePen) {
    std::mt19937 random(2);
    for (int round = 0; round < 60; ++round) {
        const std::vector<CStrokePoint> way = RandomWay(random, 1 + round % 20);
        const double length = 1 + round;
        CStabilizer string(StabilizerKind::String, length), none(StabilizerKind::None, length);
        CRealPoint end = way.front().at;
        for (const CStrokePoint& pen : way) {
            for (const CStrokePoint& point : string.Move(pen)) {
                const double pull = Distance(end, pen.at) - length;
                if (pull > 0)
                    end = Between(end, pen.at, pull / Distance(end, pen.at));
                EXPECT_NEAR(Distance(point.at, end), 0, 1e-9);
            }
            EXPECT_LE(Distance(end, pen.at), length + 1e-9);
            EXPECT_EQ(none.Move(pen), std::vector{pen});
        }
        EXPECT_EQ(string.Release(way.back()).back(), way.back());
        CStabilizer weighted(StabilizerKind::Weighted, length);
        for (const CStrokePoint& pen : way)
            weighted.Move(pen);
        EXPECT_EQ(weighted.Release(way.back()).back(), way.back());
    }
}

TEST(StrokeTest, AWeightedLineIsTheMeanOfTheWayBehindThePen) {
    // Round a corner: up to x = 50, then upwards.
    const auto wayAt = [](double along) { return along < 50 ? CRealPoint{along, 0} : CRealPoint{50, along - 50}; };
    constexpr double length = 24;
    CStabilizer weighted(StabilizerKind::Weighted, length);
    for (int along = 0; along <= 90; along += 5) {
        const std::vector<CStrokePoint> line = weighted.Move({wayAt(along), 1});
        CRealPoint sum;
        double weights = 0;
        for (double back = 0.005; back < std::min<double>(length, along); back += 0.01) {
            const CRealPoint there = wayAt(along - back);
            sum = {sum.x + there.x * (length - back), sum.y + there.y * (length - back)};
            weights += length - back;
        }
        if (weights > 0) {
            EXPECT_LT(Distance(line.back().at, {sum.x / weights, sum.y / weights}), 0.1) << along;
        }
    }
    const std::vector<CStrokePoint> rest = weighted.Release({wayAt(90), 1});
    for (std::size_t i = 1; i < rest.size(); ++i)
        EXPECT_GT(rest[i].at.y, rest[i - 1].at.y) << "on to the pen without turning back";
}

/// The curve by repeated interpolation between its knots.
CRealPoint PlainSpline(const CStrokePoint* p, double share) {
    double knots[4] = {0};
    for (int i = 1; i < 4; ++i)
        knots[i] = knots[i - 1] + std::sqrt(Distance(p[i - 1].at, p[i].at));
    const double t = knots[1] + (knots[2] - knots[1]) * share;
    CRealPoint points[4] = {p[0].at, p[1].at, p[2].at, p[3].at};
    for (const auto& [reach, count] : {std::pair{1, 3}, {2, 2}})
        for (int i = 0; i < count; ++i) {
            const double begin = knots[i], end = knots[i + reach];
            points[i] = Between(points[i], points[i + 1], (t - begin) / (end - begin));
        }
    return Between(points[0], points[1], share);
}

TEST(StrokeTest, ASmoothWayGoesThroughAllPointsWithoutCorners) {
    std::mt19937 random(3);
    for (int round = 0; round < 50; ++round) {
        const std::vector<CStrokePoint> way = RandomWay(random, 4);
        CSmoothWay smooth;
        for (std::size_t i = 0; i < 3; ++i)
            smooth.Move(way[i]);
        const std::vector<CStrokePoint> middle = smooth.Move(way[3]);
        for (std::size_t i = 0; i < middle.size(); ++i) {
            const double share = static_cast<double>(i + 1) / static_cast<double>(middle.size());
            EXPECT_LT(Distance(middle[i].at, PlainSpline(way.data(), share)), 1e-9);
        }
        EXPECT_EQ(middle.back(), way[2]);
    }
    // A quick circle: events come at every 30 degrees.
    CSmoothWay smooth;
    std::vector<CStrokePoint> curve;
    const auto add = [&](const std::vector<CStrokePoint>& points) {
        curve.insert(curve.end(), points.begin(), points.end());
    };
    for (int i = 0; i <= 12; ++i) {
        const double angle = i * std::numbers::pi / 6;
        add(smooth.Move({{100 * std::cos(angle), 100 * std::sin(angle)}, 1}));
    }
    add(smooth.End());
    for (std::size_t i = 2; i < curve.size(); ++i) {
        EXPECT_NEAR(Distance({}, curve[i].at), 100, 1.5);
        const CRealPoint a = curve[i - 2].at, b = curve[i - 1].at, c = curve[i].at;
        const double turn = std::remainder(std::atan2(c.y - b.y, c.x - b.x) - std::atan2(b.y - a.y, b.x - a.x),
                                           2 * std::numbers::pi);
        EXPECT_LT(std::abs(turn), 0.06) << i;
    }
}

TEST(StrokeTest, APixelWayIsThinAndWhole) {
    std::mt19937 random(4);
    for (int round = 0; round < 60; ++round) {
        const std::vector<CStrokePoint> way = RandomWay(random, 1 + round % 9);
        CPixelWay pixelWay;
        std::vector<CPoint> pixels;
        const auto add = [&](const std::vector<CPoint>& more) {
            pixels.insert(pixels.end(), more.begin(), more.end());
        };
        for (const CStrokePoint& point : way)
            add(pixelWay.Move(point.at));
        add(pixelWay.End());
        ASSERT_FALSE(pixels.empty());
        EXPECT_EQ(pixels.front(), PixelOf(way.front().at));
        EXPECT_EQ(pixels.back(), PixelOf(way.back().at));
        for (std::size_t i = 1; i < pixels.size(); ++i) {
            const int dx = std::abs(pixels[i].x - pixels[i - 1].x), dy = std::abs(pixels[i].y - pixels[i - 1].y);
            EXPECT_EQ(std::max(dx, dy), 1) << "neither a gap nor the same again";
            if (i < 2)
                continue;
            const int cornerX = std::abs(pixels[i].x - pixels[i - 2].x);
            const int cornerY = std::abs(pixels[i].y - pixels[i - 2].y);
            EXPECT_FALSE(cornerX == 1 && cornerY == 1 && dx + dy == 1) << "a step's corner";
        }
    }
}

/// How far a pixel's centre is inside of what a tip sweeps; below 0 it is outside.
double PlainDepth(const CTipPlace& from, const CTipPlace& to, int x, int y) {
    double depth = -1000;
    for (int i = 0; i <= 500; ++i) {
        const double share = i / 500.0;
        const double radius = from.radius + (to.radius - from.radius) * share;
        depth = std::max(depth, radius - Distance(Between(from.at, to.at, share), {x + 0.5, y + 0.5}));
    }
    return depth;
}

TEST(StrokeTest, ASweepCoversWhatTheTipPassesOver) {
    std::mt19937 random(5);
    constexpr CSize size{60, 50};
    for (int round = 0; round < 60; ++round) {
        const CTipPlace from{RandomPlace(random), Random(random, 0.5, 12)};
        const CTipPlace to =
            round % 6 == 0 ? from : CTipPlace{RandomPlace(random), Random(random, 0.5, round % 2 == 0 ? 12 : 1)};
        std::vector<bool> covered(60 * 50);
        SweepRows(from, to, size, [&](int y, int x, int endX) {
            for (; x < endX; ++x)
                covered.at(static_cast<std::size_t>(y * 60 + x)) = true;
        });
        const CRect bounds = SweepBounds(from, to);
        for (int y = 0; y < size.height; ++y)
            for (int x = 0; x < size.width; ++x) {
                const double depth = PlainDepth(from, to, x, y);
                const bool isOn = covered[static_cast<std::size_t>(y * 60 + x)];
                EXPECT_TRUE(isOn == (depth > 0) || std::abs(depth) < 0.02) << x << ' ' << y << " in " << round;
                EXPECT_TRUE(!isOn || !Intersection(bounds, {x, y, x + 1, y + 1}).IsEmpty());
            }
    }
}

TEST(StrokeTest, TheThinnestLineHasNoGapsWhereverItLies) {
    std::mt19937 random(6);
    for (int round = 0; round < 200; ++round) {
        const CTipPlace from{{5, 5 + Random(random, 0, 1)}, 0.1};
        const CTipPlace to{{45, 5 + Random(random, 0, 40)}, 0.2};
        std::vector<bool> columns(50);
        SweepRows(from, to, {50, 50}, [&](int, int x, int endX) {
            for (; x < endX; ++x)
                columns.at(static_cast<std::size_t>(x)) = true;
        });
        for (std::size_t x = 5; x < 45; ++x)
            EXPECT_TRUE(columns[x]) << x;
        int dots = 0;
        SweepRows(from, from, {50, 50}, [&](int, int x, int endX) { dots += endX - x; });
        EXPECT_GE(dots, 1) << "a dot leaves its pixel";
    }
}

TEST(StrokeTest, ATipDoesToPixelsWhatItsToolDoes) {
    std::mt19937 random(7);
    for (int round = 0; round < 60; ++round) {
        CCelImg before = round % 4 == 3 ? RandomPicture(random, 60, 50) : RandomCel(random, 60, 50);
        const bool isCel = before.GetLoadState() == LoadState::Cel;
        if (isCel)
            Sprinkle(before, random, 30);
        const auto action = isCel ? static_cast<TipAction>(round % 3) : TipAction::Erase;
        const CColor color = RandomColor(random);
        const CTipPlace places[] = {{RandomPlace(random), Random(random, 0.5, 9)},
                                    {RandomPlace(random), Random(random, 0.5, 9)}};
        CCelImg painted = before, expected = before;
        CRoundTip tip(action, color);
        tip.MoveTo(painted, places[0]);
        const CRect reach = tip.Reach(places[1]);
        const CCelImg dotted = painted;
        const CRect changed = tip.MoveTo(painted, places[1]).changed;
        EXPECT_EQ(Union(changed, Differences(dotted, painted)), changed);
        EXPECT_EQ(Intersection(changed, reach), changed);
        EXPECT_TRUE(painted.IsModified());
        if (!isCel) {
            EXPECT_EQ(AreSame(dotted, painted), changed.IsEmpty());
            continue;
        }
        const auto paint = [&](int y, int x, int endX) {
            for (; x < endX; ++x)
                if (action == TipAction::Ink) {
                    expected.SetLine(x, y, true);
                    expected.SetColorAt(x, y, {0, 0, 0, 255});
                } else if (expected.IsLine(x, y)) {
                    expected.SetLine(x, y, action == TipAction::Recolor);
                    expected.SetColorAt(x, y, {color.blue, color.green, color.red, 255});
                }
        };
        SweepRows(places[0], places[0], {60, 50}, paint);
        SweepRows(places[0], places[1], {60, 50}, paint);
        expected.SetModified(true);
        EXPECT_TRUE(AreSame(painted, expected)) << round;
    }
}

TEST(StrokeTest, SoftStampsStandAPixelApartHoweverTheWayIsCut) {
    std::mt19937 random(8);
    const CCelImg before = RandomPicture(random, 60, 50);
    CCelImg whole = before, cut = before;
    CRoundTip wholeTip(TipAction::Recolor, {}), cutTip(TipAction::Recolor, {});
    wholeTip.MoveTo(whole, {{10.25, 25.5}, 6});
    wholeTip.MoveTo(whole, {{50.25, 25.5}, 6});
    for (double x = 10.25; x <= 50.25; x += 0.625)
        cutTip.MoveTo(cut, {{x, 25.5}, 6});
    EXPECT_TRUE(AreSame(whole, cut));
    const std::size_t edge = whole.IndexOf(30, 30), core = whole.IndexOf(30, 25);
    EXPECT_EQ(whole.PlaneOf(Channel::Alpha)[core], 255);
    EXPECT_GT(whole.PlaneOf(Channel::Alpha)[edge], before.PlaneOf(Channel::Alpha)[edge]);
}

TEST(StrokeTest, ShapesAreHeldByTheirPoints) {
    EXPECT_EQ(RectangleShape({2, 3}, {7, -4}, {true, false})[2], (CRealPoint{9, -4}));
    EXPECT_EQ(RectangleShape({2, 3}, {7, -4}, {false, true})[0], (CRealPoint{-3, 10}));
    EXPECT_EQ(LineShape({2, 3}, {7, 4}, {false, true}).front(), (CRealPoint{-3, 2}));
    for (int degrees = 0; degrees < 360; ++degrees) {
        const double angle = degrees * std::numbers::pi / 180;
        const CRealPoint to = AlongSteps({1, 2}, {1 + 50 * std::cos(angle), 2 + 50 * std::sin(angle)});
        const double got = std::atan2(to.y - 2, to.x - 1) * 180 / std::numbers::pi;
        EXPECT_NEAR(std::remainder(got, 15), 0, 1e-9);
        EXPECT_LE(std::abs(std::remainder(got - degrees, 360)), 7.5 + 1e-9);
    }
    const std::vector<CRealPoint> curve = CurveShape({0, 0}, {80, 0}, {20, 30});
    EXPECT_NEAR(Distance(curve[curve.size() / 2], {20, 30}), 0, 1);
    EXPECT_EQ(curve.front(), (CRealPoint{0, 0}));
    EXPECT_EQ(curve.back(), (CRealPoint{80, 0}));
    for (const CRealPoint& point : EllipseShape({10, 10}, {50, 30}, {}))
        EXPECT_NEAR(std::pow((point.x - 30) / 20, 2) + std::pow((point.y - 20) / 10, 2), 1, 1e-9);
    EXPECT_TRUE(EllipseShape({4, 4}, {4, 4}, {}).front() == (CRealPoint{4, 4})) << "a click without a drag";
}

} // namespace
} // namespace velmor::testing
