#include "xsheet/CellHandles.h"
#include "xsheet/CellGeometry.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

using namespace velmor;

namespace {

constexpr CSize image{200, 100};
constexpr double degree = std::numbers::pi / 180;
const CCellTransform turned{300, 200, 1.5, 0.5, 0.7};

CRealPoint CornerOf(const CCellTransform& cell, int corner) {
    return CellCornersOnStage(cell, image)[static_cast<std::size_t>(corner)];
}

void ExpectAt(CRealPoint point, CRealPoint expected) {
    EXPECT_NEAR(point.x, expected.x, 1e-9);
    EXPECT_NEAR(point.y, expected.y, 1e-9);
}

} // namespace

TEST(CellHandles, CornersLieWhereOutlinesAreDrawn) {
    const CXSheetCell cell = CXSheetCell::FromFile("F", "1", turned, 0, 1, 1, image);
    const std::array<CPoint, 4> drawn = CellCorners(cell, {}, {768, 576});
    for (int corner = 0; corner < 4; ++corner) {
        EXPECT_NEAR(CornerOf(turned, corner).x, drawn[static_cast<std::size_t>(corner)].x, 2) << corner;
        EXPECT_NEAR(CornerOf(turned, corner).y, drawn[static_cast<std::size_t>(corner)].y, 2) << corner;
    }
}

TEST(CellHandles, ACornerFollowsThePointerAndWhatStaysStays) {
    for (int corner = 0; corner < 4; ++corner) {
        SCOPED_TRACE(corner);
        const CRealPoint press = CornerOf(turned, corner);
        const CRealPoint to{press.x * 1.1 - 20, press.y * 1.05};
        CCellHandleDrag drag(turned, image, CellHandle::Scale, corner, press);
        const CCellTransform free = drag.To(to, {});
        ExpectAt(CornerOf(free, corner), to);
        ExpectAt(CornerOf(free, (corner + 2) % 4), CornerOf(turned, (corner + 2) % 4));
        const CCellTransform even = drag.To(to, {true, false});
        EXPECT_NEAR(even.scaleX / even.scaleY, 3, 1e-9);
        ExpectAt(CornerOf(even, (corner + 2) % 4), CornerOf(turned, (corner + 2) % 4));
        const CCellTransform middle = drag.To(to, {false, true});
        ExpectAt(CornerOf(middle, corner), to);
        ExpectAt({middle.posX, middle.posY}, {300, 200});
        EXPECT_EQ(free.rotation, turned.rotation);
        EXPECT_EQ(drag.To(press, {}), turned) << "back where it began";
    }
}

TEST(CellHandles, ACellIsNeverMirroredAndNeverLost) {
    CCellHandleDrag drag({300, 200, 1, 1, 0}, image, CellHandle::Scale, 2, {400, 250});
    for (const bool constrained : {false, true}) {
        const CCellTransform small = drag.To({-900, -900}, {constrained, false});
        EXPECT_GE(small.scaleX * image.width, 0.8);
        EXPECT_GE(small.scaleY * image.height, 0.4);
        EXPECT_LT(small.scaleX, 0.02);
    }
    CCellHandleDrag flat({300, 200, 0, 1, 0}, image, CellHandle::Scale, 2, {300, 250});
    EXPECT_EQ(flat.To({400, 300}, {}).scaleX, 0) << "nothing to grow from";
    CCellHandleDrag mirrored({300, 200, -1, 1, 0}, image, CellHandle::Scale, 2, {200, 250});
    EXPECT_NEAR(mirrored.To({100, 250}, {}).scaleX, -1.5, 1e-9);
}

TEST(CellHandles, TurningFollowsThePointerRoundAndRound) {
    const CCellTransform level{300, 200, 1, 1, 0};
    CCellHandleDrag drag(level, image, CellHandle::Turn, 2, {400, 200});
    CCellTransform now;
    for (int angle = 10; angle <= 400; angle += 10)
        now = drag.To({300 + 100 * std::cos(angle * degree), 200 + 100 * std::sin(angle * degree)}, {});
    EXPECT_NEAR(now.rotation, -400 * degree, 1e-9) << "clockwise counts up";
    EXPECT_EQ(now.posX, 300);
    const CCellTransform steps =
        drag.To({300 + 100 * std::cos(52 * degree), 200 + 100 * std::sin(52 * degree)}, {true, false});
    EXPECT_NEAR(steps.rotation, -(360 + 45) * degree, 1e-9);
    const CCellTransform pivoted =
        drag.To({300 + 100 * std::cos(90 * degree), 200 + 100 * std::sin(90 * degree)}, {false, true});
    ExpectAt(CornerOf(pivoted, 0), CornerOf(level, 0));
    EXPECT_NE(pivoted.posX, 300);
}
