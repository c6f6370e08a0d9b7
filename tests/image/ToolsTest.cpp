#include "image/paint/Tools.h"

#include "RandomImages.h"

#include <climits>
#include <cmath>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

using namespace velmor;

namespace {

/// The ink of each pen as offsets from its centre.
const std::vector<std::pair<int, int>> pens[] = {
    {{0, 0}},
    {{-1, 0}, {0, 0}, {1, 0}, {0, 1}},
    {{0, -2}, {-1, -1}, {1, -1}, {-2, 0}, {-1, 0}, {0, 0}, {1, 0}, {2, 0}, {0, 1}, {1, 1}, {0, 2}},
    {{0, -2}, {-1, -1}, {1, -1},  {-2, 0},  {-1, 0}, {0, 0},  {1, 0},   {2, 0},  {0, 1},
     {1, 1},  {0, 2},   {-2, -2}, {-1, -2}, {1, -2}, {2, -2}, {-2, -1}, {2, -1}, {-3, 0},
     {3, 0},  {-2, 1},  {2, 1},   {-2, 2},  {-1, 2}, {1, 2},  {2, 2},   {0, 3}},
};

bool IsInside(const CCelImg& image, int x, int y) {
    return x >= 0 && y >= 0 && x < image.Width() && y < image.Height();
}

void PlainPen(CCelImg& cel, int x, int y, int pen) {
    for (const auto& [dx, dy] : pens[pen])
        if (IsInside(cel, x + dx, y + dy)) {
            cel.SetLine(x + dx, y + dy, true);
            cel.SetColorAt(x + dx, y + dy, {0, 0, 0, 255});
            cel.SetModified(true);
        }
}

/// A brush stamp by the distance of each pixel, for both brush tools and both kinds of image.
void PlainBrush(CCelImg& image, int x, int y, int brush, bool erases, CColor color) {
    const double radius = 1 + 4 * brush, core = 2 * radius / 3;
    const bool isCel = image.GetLoadState() == LoadState::Cel;
    color.alpha = 255;
    for (int dy = -21; dy <= 20; ++dy)
        for (int dx = -21; dx <= 20; ++dx) {
            const double distance = std::sqrt(static_cast<double>(dx * dx + dy * dy));
            const int atX = x + dx, atY = y + dy;
            if (distance > radius || !IsInside(image, atX, atY) || (isCel && !image.IsLine(atX, atY)))
                continue;
            if (isCel) {
                image.SetLine(atX, atY, !erases);
                image.SetColorAt(atX, atY, color);
                image.SetModified(true);
                continue;
            }
            const int weight =
                distance <= core ? 255 : static_cast<int>(255 - (distance - core) / (radius - core) * 255);
            std::uint8_t& alpha = image.PlaneOf(Channel::Alpha)[image.IndexOf(atX, atY)];
            alpha = static_cast<std::uint8_t>(erases ? alpha * (255 - weight) / 255
                                                     : alpha + (255 - alpha) * weight / 255);
            if (weight > 0)
                image.SetModified(true);
        }
}

template<class Stamp>
void PlainStroke(CPoint from, CPoint to, Stamp stamp) {
    if (from == to)
        to = {from.x + 1, from.y + 1};
    const bool isSteep = std::abs(to.y - from.y) >= std::abs(to.x - from.x);
    if (isSteep ? to.y < from.y : to.x < from.x)
        std::swap(from, to);
    const float dx = static_cast<float>(to.x - from.x), dy = static_cast<float>(to.y - from.y);
    for (int y = from.y; isSteep && y <= to.y; ++y)
        stamp(static_cast<int>(static_cast<float>(from.x) + static_cast<float>(y - from.y) * (dx / dy)), y);
    for (int x = from.x; !isSteep && x <= to.x; ++x)
        stamp(x, static_cast<int>(static_cast<float>(from.y) + static_cast<float>(x - from.x) * (dy / dx)));
}

CPoint RandomPoint(std::mt19937& random, const CCelImg& image) {
    return {RandomBetween(random, -40, image.Width() + 40), RandomBetween(random, -40, image.Height() + 40)};
}

void ExpectChange(const CCelImg& before, const CCelImg& after, const CCelImg& expected,
                  const CPaintResult& result) {
    EXPECT_TRUE(result.status);
    EXPECT_TRUE(AreSame(after, expected));
    const CRect difference = Differences(before, after);
    EXPECT_EQ(Union(result.changed, difference), result.changed);
    EXPECT_EQ(Intersection(result.changed, {0, 0, after.Width(), after.Height()}), result.changed);
}

CCelImg RandomImage(std::mt19937& random, bool isCel) {
    const int width = RandomBetween(random, 2, 100), height = RandomBetween(random, 2, 100);
    if (!isCel)
        return RandomPicture(random, width, height);
    CCelImg cel = RandomCel(random, width, height);
    Sprinkle(cel, random, 30);
    return cel;
}

} // namespace

TEST(ToolsTest, PensDrawTheirShapesInBlackLines) {
    std::mt19937 random(1);
    for (int i = 0; i < 300; ++i) {
        const CCelImg before = RandomImage(random, true);
        CCelImg drawn = before, expected = before;
        const CPoint at = RandomPoint(random, before), to = i % 8 == 0 ? at : RandomPoint(random, before);
        const int pen = i % 4;
        PlainPen(expected, at.x, at.y, pen);
        ExpectChange(before, drawn, expected, {CStatus(), Pen(drawn, at.x, at.y, pen).changed});

        PlainStroke(at, to, [&](int x, int y) { PlainPen(expected, x, y, pen); });
        const CCelImg stamped = drawn;
        const CPaintResult result = PenStroke(drawn, at, to, pen);
        expected.SetModified(true);
        ExpectChange(stamped, drawn, expected, result);
    }
}

TEST(ToolsTest, BrushesTreatLinesOfCelsAndAlphaOfPictures) {
    std::mt19937 random(2);
    for (int i = 0; i < 240; ++i) {
        const CCelImg before = RandomImage(random, i % 2 == 0);
        CCelImg brushed = before, expected = before;
        const CPoint at = RandomPoint(random, before), to = RandomPoint(random, before);
        const int brush = i % 6;
        const bool erases = RandomBetween(random, 0, 1) == 1;
        const CColor color = RandomColor(random);
        PlainBrush(expected, at.x, at.y, brush, erases, color);
        CPaintResult result =
            erases ? Eraser(brushed, at.x, at.y, brush, color) : LineBrush(brushed, at.x, at.y, brush, color);
        ExpectChange(before, brushed, expected, result);

        const CCelImg stamped = brushed;
        PlainStroke(at, to, [&](int x, int y) { PlainBrush(expected, x, y, brush, erases, color); });
        expected.SetModified(true);
        result =
            erases ? EraserStroke(brushed, at, to, brush, color) : LineBrushStroke(brushed, at, to, brush, color);
        ExpectChange(stamped, brushed, expected, result);
    }
}

TEST(ToolsTest, RectanglesTreatWhatTheyCover) {
    std::mt19937 random(3);
    for (int i = 0; i < 200; ++i) {
        const CCelImg before = RandomImage(random, i % 2 == 0);
        CCelImg treated = before, expected = before;
        const CPoint low = RandomPoint(random, before), high = RandomPoint(random, before);
        const bool erases = i % 4 < 2;
        CColor color = RandomColor(random);
        const CPaintResult result = erases ? DrawEraserRect(treated, low.x, high.x, low.y, high.y, color)
                                           : DrawLineBrushRect(treated, low.x, high.x, low.y, high.y, color);
        color.alpha = 255;
        for (int y = std::max(low.y, 0); y < std::min(high.y, before.Height()); ++y)
            for (int x = std::max(low.x, 0); x < std::min(high.x, before.Width()); ++x) {
                if (before.LineMask().empty())
                    expected.PlaneOf(Channel::Alpha)[before.IndexOf(x, y)] = erases ? 0 : 255;
                else if (before.IsLine(x, y)) {
                    expected.SetColorAt(x, y, color);
                    expected.SetLine(x, y, !erases);
                }
            }
        expected.SetModified(!result.changed.IsEmpty());
        ExpectChange(before, treated, expected, result);
    }
}

TEST(ToolsTest, WhatDoesNotReachTheImageChangesNothing) {
    std::mt19937 random(4);
    CCelImg cel = RandomCel(random, 30, 20);
    Sprinkle(cel, random, 30);
    const CCelImg before = cel;
    for (const int wrong : {-1, 4, 6, INT_MAX, INT_MIN}) {
        if (wrong != 4) {
            EXPECT_TRUE(Eraser(cel, 5, 5, wrong, {}).changed.IsEmpty());
            EXPECT_TRUE(LineBrush(cel, 5, 5, wrong, {}).changed.IsEmpty());
        }
        EXPECT_TRUE(Pen(cel, 5, 5, wrong).changed.IsEmpty());
    }
    for (const int far : {INT_MAX, INT_MIN}) {
        EXPECT_TRUE(Pen(cel, far, 5, 3).changed.IsEmpty());
        EXPECT_TRUE(Eraser(cel, 5, far, 5, {}).changed.IsEmpty());
    }
    EXPECT_TRUE(AreSame(cel, before));

    EXPECT_TRUE(PenStroke(cel, {INT_MAX, INT_MAX}, {INT_MAX, INT_MAX}, 0).changed.IsEmpty());
    EXPECT_TRUE(cel.IsModified());
    EXPECT_EQ(PenStroke(cel, {INT_MIN, 7}, {INT_MAX, 7}, 0).changed, (CRect{0, 7, 30, 8}));
    EXPECT_TRUE(LineBrushStroke(cel, {INT_MIN, INT_MAX}, {40, INT_MAX}, 5, {}).changed.IsEmpty());
}

TEST(ToolsTest, NeedsAnImage) {
    CCelImg nothing, picture;
    ASSERT_TRUE(picture.CreatePicture(4, 4, "a.rgba"));
    EXPECT_EQ(Pen(picture, 0, 0, 0).status.Message(), "Internal Error : cel is not loaded in Pen");
    EXPECT_EQ(PenStroke(picture, {}, {}, 0).status.Message(), "Internal Error : cel is not loaded in Pen");
    const std::string lineBrush = "Internal Error : cel is not loaded in LineBrush";
    const std::string eraser = "Internal Error : cel/picture is not loaded in Eraser";
    EXPECT_EQ(LineBrush(nothing, 0, 0, 0, {}).status.Message(), lineBrush);
    EXPECT_EQ(LineBrushStroke(nothing, {}, {}, 0, {}).status.Message(), lineBrush);
    EXPECT_EQ(Eraser(nothing, 0, 0, 0, {}).status.Message(), eraser);
    EXPECT_EQ(EraserStroke(nothing, {}, {}, 0, {}).status.Message(), eraser);
    EXPECT_EQ(DrawEraserRect(nothing, 0, 1, 0, 1, {}).status.Message(),
              "Internal Error : cel/picture is not loaded in DrawEraserRect");
    EXPECT_EQ(DrawLineBrushRect(nothing, 0, 1, 0, 1, {}).status.Message(),
              "Internal Error : cel/picture is not loaded in DrawLineBrushRect");
}
