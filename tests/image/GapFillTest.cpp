#include "image/paint/GapFill.h"

#include "RandomImages.h"
#include "image/paint/Fill.h"
#include "image/paint/GapMap.h"
#include "image/paint/LineDistance.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <gtest/gtest.h>
#include <vector>

using namespace velmor;

namespace {

constexpr CColor white{255, 255, 255, 255};
constexpr CColor red{0, 0, 255, 255};
constexpr CColor blue{255, 0, 0, 255};

CCelImg EmptyCel(int width, int height) {
    CCelImg cel;
    if (!cel.CreateCel(width, height, "gap.bit"))
        std::abort();
    return cel;
}

void Line(CCelImg& cel, CPoint a, CPoint b) {
    const int steps = std::max({std::abs(b.x - a.x), std::abs(b.y - a.y), 1});
    CPoint last = a;
    for (int i = 0; i <= steps; ++i) {
        const CPoint at{a.x + (b.x - a.x) * i / steps, a.y + (b.y - a.y) * i / steps};
        cel.SetLine(at.x, at.y, true);
        cel.SetLine(last.x, at.y, true); // no diagonal steps
        last = at;
    }
}

/// A box of lines with `gap` free pixels in the middle of its right side.
CCelImg BoxWithGap(int gap) {
    CCelImg cel = EmptyCel(120, 100);
    Line(cel, {20, 20}, {80, 20});
    Line(cel, {20, 20}, {20, 80});
    Line(cel, {20, 80}, {80, 80});
    Line(cel, {80, 20}, {80, 39});
    Line(cel, {80, 40 + gap}, {80, 80});
    return cel;
}

CPaintResult GapFill(CCelImg& cel, CPoint at, CColor color, const CGapFillChoices& choices) {
    return PaintArea(cel, FindFillArea(cel, at, choices), color);
}

bool IsPainted(const CCelImg& cel, int x, int y) {
    return cel.ColorAt(x, y) != white;
}

int CountPainted(const CCelImg& cel) {
    int count = 0;
    for (int y = 0; y < cel.Height(); ++y)
        for (int x = 0; x < cel.Width(); ++x)
            count += !cel.IsLine(x, y) && IsPainted(cel, x, y) ? 1 : 0;
    return count;
}

/// How many free pixels with x below `endX` differ in being painted from `inside`.
template<class Inside>
int CountWrong(const CCelImg& cel, Inside inside) {
    int wrong = 0;
    for (int y = 0; y < cel.Height(); ++y)
        for (int x = 0; x < cel.Width(); ++x)
            wrong += !cel.IsLine(x, y) && IsPainted(cel, x, y) != inside(x, y) ? 1 : 0;
    return wrong;
}

bool InBox(int x, int y) {
    return x > 20 && x < 80 && y > 20 && y < 80;
}

int PlainSquare(const CCelImg& cel, int x, int y) {
    int best = 1 << 20;
    for (int v = -1; v <= cel.Height(); ++v)
        for (int u = -1; u <= cel.Width(); ++u) {
            const bool outside = u < 0 || v < 0 || u == cel.Width() || v == cel.Height();
            if (outside || cel.IsLine(u, v))
                best = std::min(best, (u - x) * (u - x) + (v - y) * (v - y));
        }
    return best;
}

/// Where one comes from a pixel over pixels that are farther from lines than a squared distance.
std::vector<bool> PlainReach(const CCelImg& cel, CPoint from, const std::vector<int>& squares, int limit) {
    std::vector<bool> reached(squares.size());
    std::deque<CPoint> next{from};
    while (!next.empty()) {
        const CPoint at = next.front();
        next.pop_front();
        if (at.x < 0 || at.y < 0 || at.x >= cel.Width() || at.y >= cel.Height())
            continue;
        const std::size_t index = cel.IndexOf(at.x, at.y);
        if (reached[index] || squares[index] <= limit)
            continue;
        reached[index] = true;
        for (const auto& [dx, dy] : {std::pair(1, 0), std::pair(-1, 0), std::pair(0, 1), std::pair(0, -1)})
            next.push_back({at.x + dx, at.y + dy});
    }
    return reached;
}

std::vector<int> PlainSquares(const CCelImg& cel) {
    std::vector<int> squares;
    for (int y = 0; y < cel.Height(); ++y)
        for (int x = 0; x < cel.Width(); ++x)
            squares.push_back(PlainSquare(cel, x, y));
    return squares;
}

CCelImg RandomDrawing(std::mt19937& random) {
    CCelImg cel = EmptyCel(RandomBetween(random, 20, 150), RandomBetween(random, 20, 90));
    for (int i = RandomBetween(random, 3, 10); i > 0; --i)
        DrawRandomLine(cel, random);
    Sprinkle(cel, random, RandomBetween(random, 0, 1));
    return cel;
}

} // namespace

TEST(LineDistance, IsThatOfAPlainSearchInTheWholeImageAndInWindows) {
    std::mt19937 random(1);
    for (int round = 0; round < 30; ++round) {
        const CCelImg cel = RandomDrawing(random);
        const int limit = RandomBetween(random, 0, 60);
        const CMaskPlane lines(cel);
        const CLineDistance whole(lines, {0, 0, cel.Width(), cel.Height()}, limit);
        const CRect window{5, 3, cel.Width() - 2, cel.Height()};
        const CLineDistance part(lines, window, limit);
        for (int y = 0; y < cel.Height(); ++y)
            for (int x = 0; x < cel.Width(); ++x) {
                const int square = PlainSquare(cel, x, y);
                ASSERT_EQ(std::min<int>(whole.Row(y)[x], limit + 1), std::min(square, limit + 1)) << x << ' ' << y;
                if (x >= 5 + 8 && x < cel.Width() - 2 - 8 && y >= 3 + 8) {
                    ASSERT_EQ(std::min<int>(part.Row(y - 3)[x - 5], limit + 1), std::min(square, limit + 1));
                }
            }
    }
}

TEST(GapFill, ClosesGapsUpToItsSizeAndNoWiderOnes) {
    for (int gap = 1; gap <= mostFillGap; ++gap) {
        CCelImg closed = BoxWithGap(gap);
        EXPECT_TRUE(GapFill(closed, {50, 50}, red, {gap}).status);
        // Full up to the lines and into the corners, with a straight edge in the gap; one that is even leaves it
        // open to which side its middle falls.
        EXPECT_EQ(
            CountWrong(closed, [&](int x, int y) { return InBox(x, y) || (x == 80 && IsPainted(closed, x, y)); }),
            0)
            << gap;
        CCelImg open = BoxWithGap(gap + 1);
        EXPECT_TRUE(GapFill(open, {50, 50}, red, {gap}).status);
        EXPECT_TRUE(IsPainted(open, 110, 50)) << gap;
    }
}

TEST(GapFill, LeavesNoSliverInSlantedGaps) {
    // A diamond whose right corner is missing, and one with a gap in a slanted side.
    for (const bool inSide : {false, true}) {
        CCelImg cel = EmptyCel(160, 160);
        Line(cel, {80, 20}, {20, 80});
        Line(cel, {20, 80}, {80, 140});
        Line(cel, {80, 140}, inSide ? CPoint{140, 80} : CPoint{136, 84});
        Line(cel, {80, 20}, inSide ? CPoint{104, 44} : CPoint{136, 76});
        if (inSide)
            Line(cel, {140, 80}, {108, 48});
        ASSERT_TRUE(GapFill(cel, {80, 80}, red, {8}).status);
        const int wrong = CountWrong(cel, [](int x, int y) { return std::abs(x - 80) + std::abs(y - 80) < 60; });
        EXPECT_LE(wrong, inSide ? 5 : 32) << inSide; // along the closing line, as long as the gap
    }
}

TEST(GapFill, ReachesIntoCornersAndDeadEnds) {
    CCelImg wedge = EmptyCel(200, 60);
    Line(wedge, {5, 30}, {190, 45});
    Line(wedge, {5, 30}, {190, 15});
    Line(wedge, {190, 15}, {190, 45});
    CCelImg plain = wedge;
    ASSERT_TRUE(GapFill(wedge, {180, 30}, red, {20}).status);
    ASSERT_TRUE(Fill(plain, 180, 30, red).status);
    EXPECT_EQ(CountPainted(wedge), CountPainted(plain));

    // A hand with a finger narrower than the gap size, from the palm and from the finger.
    for (const CPoint from : {CPoint{30, 30}, CPoint{90, 31}, CPoint{60, 28}}) {
        CCelImg hand = EmptyCel(120, 60);
        Line(hand, {10, 10}, {50, 10});
        Line(hand, {10, 10}, {10, 50});
        Line(hand, {10, 50}, {50, 50});
        Line(hand, {50, 10}, {50, 26});
        Line(hand, {50, 33}, {50, 50});
        Line(hand, {50, 26}, {100, 26});
        Line(hand, {50, 33}, {100, 33});
        Line(hand, {100, 26}, {100, 33});
        plain = hand;
        ASSERT_TRUE(GapFill(hand, from, red, {12}).status);
        ASSERT_TRUE(Fill(plain, 30, 30, red).status);
        EXPECT_EQ(CountPainted(hand), CountPainted(plain)) << from.x;
    }
}

TEST(GapFill, KeepsARoomSmallerThanTheGapSizeThatIsClearlyARoom) {
    CCelImg cel = EmptyCel(80, 60);
    for (int degree = 20; degree < 340; ++degree) { // an eye 20 wide, open to the right by about 7
        const double angle = degree * 3.14159265 / 180;
        const CPoint at{30 + static_cast<int>(std::lround(10 * std::cos(angle))),
                        30 + static_cast<int>(std::lround(10 * std::sin(angle)))};
        cel.SetLine(at.x, at.y, true);
        cel.SetLine(at.x, at.y - 1, true);
    }
    ASSERT_TRUE(GapFill(cel, {30, 30}, red, {24}).status);
    EXPECT_TRUE(IsPainted(cel, 36, 34));
    EXPECT_FALSE(IsPainted(cel, 60, 30));
    EXPECT_FALSE(IsPainted(cel, 5, 5));
}

TEST(GapFill, WithoutAGapIsThePlainFill) {
    std::mt19937 random(2);
    for (int round = 0; round < 40; ++round) {
        CCelImg cel = RandomDrawing(random);
        CCelImg plain = cel;
        const CPoint at{RandomBetween(random, -2, cel.Width()), RandomBetween(random, -2, cel.Height())};
        const CPaintResult result = GapFill(cel, at, red, {0, true});
        EXPECT_EQ(result.changed, Fill(plain, at.x, at.y, red).changed);
        EXPECT_EQ(cel.FileBytes(), plain.FileBytes());
        EXPECT_EQ(cel.IsModified(), plain.IsModified());
        EXPECT_FALSE(result.leak);
    }
}

// A ball as wide as the gap, which is rolled from the seed as far as it goes, pixel by pixel.
TEST(GapFill, GoesWhereABallGoesAndIntoNoOtherRoom) {
    std::mt19937 random(3);
    for (int round = 0; round < 60; ++round) {
        CCelImg cel = RandomDrawing(random);
        const int gap = RandomBetween(random, 1, 14);
        const CPoint seed{RandomBetween(random, 0, cel.Width() - 1), RandomBetween(random, 0, cel.Height() - 1)};
        const std::vector<int> squares = PlainSquares(cel);
        const int open = (gap + 1) * (gap + 1) / 4;
        const double surelyClosed = std::pow((gap + 1) / 2.0 - 0.71, 2);
        if (squares[cel.IndexOf(seed.x, seed.y)] <= open)
            continue;
        const std::vector<bool> ball = PlainReach(cel, seed, squares, open);
        const std::vector<bool> most = PlainReach(cel, seed, squares, static_cast<int>(surelyClosed));
        const std::vector<bool> free = PlainReach(cel, seed, squares, 0);
        ASSERT_TRUE(GapFill(cel, seed, red, {gap}).status);
        for (int y = 0; y < cel.Height(); ++y)
            for (int x = 0; x < cel.Width(); ++x) {
                const std::size_t at = cel.IndexOf(x, y);
                if (ball[at]) {
                    EXPECT_TRUE(IsPainted(cel, x, y)) << round << ' ' << x << ' ' << y;
                } else if (!free[at] || (squares[at] > open && !most[at])) {
                    EXPECT_FALSE(IsPainted(cel, x, y)) << round << ' ' << x << ' ' << y;
                }
            }
    }
}

TEST(GapFill, LeavesNothingUnpaintedBetweenRooms) {
    std::mt19937 random(4);
    for (int round = 0; round < 20; ++round) {
        CCelImg cel = RandomDrawing(random);
        CCelImg before = cel;
        for (int y = 0; y < cel.Height(); ++y)
            for (int x = 0; x < cel.Width(); ++x)
                if (!cel.IsLine(x, y) && !IsPainted(cel, x, y)) {
                    ASSERT_TRUE(GapFill(cel, {x, y}, red, {6}).status);
                    ASSERT_TRUE(IsPainted(cel, x, y));
                }
        for (int y = 0; y < cel.Height(); ++y)
            for (int x = 0; x < cel.Width(); ++x)
                if (cel.IsLine(x, y)) {
                    ASSERT_EQ(cel.ColorAt(x, y), before.ColorAt(x, y));
                }
    }
}

TEST(GapFill, RefusesToLeakAndSaysWhere) {
    CCelImg cel = BoxWithGap(13);
    const std::vector<std::uint8_t> before = cel.FileBytes();
    const CPaintResult refused = GapFill(cel, {30, 30}, red, {8, true});
    ASSERT_TRUE(refused.leak);
    EXPECT_NEAR(refused.leak->x, 80, 2);
    EXPECT_NEAR(refused.leak->y, 46, 2);
    EXPECT_TRUE(refused.changed.IsEmpty());
    EXPECT_EQ(cel.FileBytes(), before);
    EXPECT_FALSE(cel.IsModified());

    const CPaintResult forced = GapFill(cel, {30, 30}, red, {8, false});
    EXPECT_FALSE(forced.leak);
    EXPECT_TRUE(IsPainted(cel, 0, 0));

    // The background is open to the border by itself, however near to a line the fill begins.
    for (const CPoint at : {CPoint{3, 3}, CPoint{81, 25}, CPoint{50, 19}}) {
        CCelImg page = BoxWithGap(4);
        EXPECT_FALSE(GapFill(page, at, red, {8, true}).leak) << at.x;
        EXPECT_TRUE(IsPainted(page, 110, 90));
        EXPECT_FALSE(IsPainted(page, 50, 50));
    }
    // So is what the border cuts off, even where that is narrow.
    CCelImg arm = EmptyCel(100, 100);
    Line(arm, {30, 99}, {30, 10});
    Line(arm, {30, 10}, {80, 10});
    Line(arm, {80, 10}, {80, 60});
    Line(arm, {80, 60}, {42, 60});
    Line(arm, {42, 60}, {42, 99});
    EXPECT_FALSE(GapFill(arm, {60, 40}, red, {8, true}).leak);
    EXPECT_TRUE(IsPainted(arm, 36, 99));
}

TEST(GapFill, ClosesGapsToTheBorderOfTheImage) {
    CCelImg cel = EmptyCel(60, 60);
    Line(cel, {30, 0}, {30, 54}); // ends five pixels below the border
    ASSERT_TRUE(GapFill(cel, {10, 10}, red, {5}).status);
    EXPECT_EQ(CountWrong(cel, [&](int x, int y) { return x < 30 || (x == 30 && IsPainted(cel, x, y)); }), 0);
    CCelImg open = EmptyCel(60, 60);
    Line(open, {30, 0}, {30, 53});
    ASSERT_TRUE(GapFill(open, {10, 10}, red, {5}).status);
    EXPECT_EQ(CountWrong(open, [](int, int) { return true; }), 0);
}

TEST(GapFill, PaintsGradientsInTheSameArea) {
    CCelImg solid = BoxWithGap(6);
    CCelImg gradient = solid;
    CCelImg closed = BoxWithGap(0);
    ASSERT_TRUE(GapFill(solid, {50, 50}, red, {6}).status);
    ASSERT_TRUE(PaintArea(gradient, FindFillArea(gradient, {50, 50}, {6}), {50, 50}, red, {60, 70}, blue).status);
    ASSERT_TRUE(FillGradient(closed, 50, 50, red, 60, 70, blue).status);
    EXPECT_EQ(CountPainted(gradient), CountPainted(solid));
    for (int x = 21; x < 80; ++x)
        EXPECT_EQ(gradient.ColorAt(x, 33), closed.ColorAt(x, 33));
    CCelImg leaking = BoxWithGap(12);
    const CFillArea leak = FindFillArea(leaking, {50, 50}, {6, true});
    EXPECT_TRUE(PaintArea(leaking, leak, {50, 50}, red, {60, 70}, blue).leak);
    EXPECT_EQ(CountPainted(leaking), 0);
}

TEST(GapFill, BoxAndLoopFillRoomsThatAreWhollyInside) {
    // Two rooms side by side with gaps, one of them cut by the rectangle.
    CCelImg cel = EmptyCel(140, 60);
    for (const int x : {10, 50, 90}) {
        Line(cel, {x, 10}, {x, 27});
        Line(cel, {x, 32}, {x, 50});
    }
    Line(cel, {10, 10}, {90, 10});
    Line(cel, {10, 50}, {90, 50});
    CCelImg loop = cel;
    CCelImg none = cel;
    const CCelImg drawing = cel;
    ASSERT_TRUE(PaintArea(cel, FindBoxArea(cel, {70, 55}, {5, 5}, {4}), red).status);
    EXPECT_TRUE(IsPainted(cel, 11, 11) && IsPainted(cel, 49, 49));
    EXPECT_FALSE(IsPainted(cel, 60, 30) || IsPainted(cel, 6, 6));
    const std::vector<CPoint> around{{4, 4}, {70, 8}, {60, 58}, {-8, 54}};
    ASSERT_TRUE(PaintArea(loop, FindLoopArea(loop, around, {4}), red).status);
    EXPECT_EQ(loop.FileBytes(), cel.FileBytes());
    EXPECT_TRUE(PaintArea(none, FindLoopArea(none, around, {0}), red).changed.IsEmpty()); // nothing is closed
    for (const std::vector<CPoint>& empty : {std::vector<CPoint>{}, std::vector<CPoint>{{30, 30}}})
        EXPECT_TRUE(PaintArea(none, FindLoopArea(none, empty, {4}), red).changed.IsEmpty());
    EXPECT_EQ(none.FileBytes(), drawing.FileBytes());
}

TEST(GapFill, BoxWithoutAGapIsThePlainBox) {
    std::mt19937 random(5);
    for (int round = 0; round < 40; ++round) {
        CCelImg cel = RandomDrawing(random);
        CCelImg plain = cel;
        const CRect box{RandomBetween(random, -5, 40), RandomBetween(random, -5, 40),
                        RandomBetween(random, 41, 160), RandomBetween(random, 41, 100)};
        ASSERT_TRUE(PaintArea(cel, FindBoxArea(cel, {box.x, box.endY}, {box.endX, box.y}, {0}), red).status);
        ASSERT_TRUE(FillBox(plain, box.x, std::min(box.endX, cel.Width() - 1), box.y,
                            std::min(box.endY, cel.Height() - 1), red)
                        .status);
        EXPECT_EQ(CountPainted(cel), CountPainted(plain));
    }
}

TEST(GapFill, StopsAtLinesOfOtherCelsAndRunsUnderThem) {
    CCelImg cel = EmptyCel(60, 20);
    CMaskPlane others(60, 20);
    for (int y = 0; y < 20; ++y)
        others.SetRun(y, 20, 25); // five wide
    for (int y = 0; y < 20; ++y)
        cel.SetLine(24, y, true); // one of them is this cel's own
    CGapFillChoices choices{0, false, 0, &others};
    ASSERT_TRUE(GapFill(cel, {5, 5}, red, choices).status);
    EXPECT_EQ(CountWrong(cel, [](int x, int) { return x < 20; }), 0);
    choices.underLine = 4;
    ASSERT_TRUE(GapFill(cel, {5, 5}, red, choices).status);
    EXPECT_EQ(CountWrong(cel, [](int x, int) { return x < 24; }), 0);

    CCelImg paint = EmptyCel(60, 20);
    ASSERT_TRUE(GapFill(paint, {5, 5}, red, choices).status);
    const CPaintResult right = GapFill(paint, {40, 5}, blue, choices);
    ASSERT_TRUE(right.status);
    EXPECT_EQ(right.changed, (CRect{21, 0, 60, 20}));
    EXPECT_EQ(paint.ColorAt(21, 9), red); // both go to the middle, which is the later one's
    EXPECT_EQ(paint.ColorAt(22, 9), blue);
    EXPECT_EQ(paint.ColorAt(23, 9), blue);
}

TEST(GapFill, FindsTheGapsThatItCloses) {
    EXPECT_EQ(FindGaps(CMaskPlane(BoxWithGap(7)), 7), (std::vector<CPassage>{{{80, 39}, {80, 47}}}));
    EXPECT_TRUE(FindGaps(CMaskPlane(BoxWithGap(8)), 7).empty());
    CCelImg two = BoxWithGap(4);
    for (int x = 46; x < 49; ++x)
        two.SetLine(x, 20, false);
    const std::vector<CPassage> gaps = FindGaps(CMaskPlane(two), 8);
    ASSERT_EQ(gaps.size(), 2u);
    EXPECT_EQ(gaps[0].SquaredLength(), 25);
    EXPECT_EQ(gaps[1].SquaredLength(), 16);
}

TEST(GapFill, DoesNothingWhereThereIsNothingToFill) {
    CCelImg cel = BoxWithGap(3);
    const std::vector<std::uint8_t> before = cel.FileBytes();
    for (const CPoint at : {CPoint{20, 20}, CPoint{-1, 5}, CPoint{5, 100}, CPoint{120, 0}})
        EXPECT_TRUE(GapFill(cel, at, red, {8, true}).changed.IsEmpty());
    EXPECT_EQ(cel.FileBytes(), before);
    EXPECT_FALSE(cel.IsModified());
}
