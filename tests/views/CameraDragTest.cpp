#include "views/camera/CameraDrag.h"

#include "xsheet/CellGeometry.h"

#include <gtest/gtest.h>

namespace velmor {
namespace {

// What arrives of a drag along `steps` steps of `step` each.
CPoint Arrived(CCameraDrag drag, CPoint start, CPoint step, int steps, double turn) {
    CPoint arrived;
    for (int i = 1; i <= steps; ++i) {
        const CPoint motion = drag.MotionTo({start.x + i * step.x, start.y + i * step.y});
        const CPoint applied = RotatePoint(motion, turn);
        arrived = {arrived.x + applied.x, arrived.y + applied.y};
    }
    return arrived;
}

TEST(CameraDragTest, StepsAddUpToTheWholeMotionAtEveryZoom) {
    const CPoint start{40, 30};
    EXPECT_EQ(Arrived({start, CZoomLevel(1), 0}, start, {1, -1}, 9, 0), (CPoint{9, 9})) << "up is positive";
    EXPECT_EQ(Arrived({start, CZoomLevel(2), 0}, start, {1, 1}, 9, 0), (CPoint{4, -4}));
    EXPECT_EQ(Arrived({start, CZoomLevel(4), 0}, start, {-1, 0}, 9, 0), (CPoint{-2, 0}));
    EXPECT_EQ(Arrived({start, CZoomLevel(0), 0}, start, {1, 0}, 9, 0), (CPoint{18, 0}));
    EXPECT_EQ(Arrived({start, CZoomLevel(-1), 0}, start, {0, 1}, 9, 0), (CPoint{0, -27}));
}

TEST(CameraDragTest, ThereAndBackIsNoMotion) {
    CCameraDrag drag({0, 0}, CZoomLevel(3), 0);
    int sum = 0;
    for (const int x : {1, 4, 8, 5, -2, -7, -1, 0})
        sum += drag.MotionTo({x, 0}).x;
    EXPECT_EQ(sum, 0);
}

TEST(CameraDragTest, SlowDragUnderATurnedCameraFollowsTheMouse) {
    const CPoint one = CCameraDrag({0, 0}, CZoomLevel(1), 0.5).MotionTo({30, 0});
    EXPECT_EQ(one, (CPoint{30, 0})) << "one step passes on the mouse's own motion";
    for (const double turn : {0.3, 0.785, 2.0, -1.1}) {
        const CPoint whole = RotatePoint({100, 40}, turn);
        const CPoint slow = Arrived({{0, 0}, CZoomLevel(1), turn}, {0, 0}, {5, -2}, 20, turn);
        const CPoint slowest = Arrived({{0, 0}, CZoomLevel(1), turn}, {0, 0}, {1, 0}, 100, turn);
        EXPECT_NEAR(slow.x, whole.x, 2) << turn;
        EXPECT_NEAR(slow.y, whole.y, 2) << turn;
        EXPECT_NEAR(slowest.x, RotatePoint({100, 0}, turn).x, 2) << turn;
    }
}

} // namespace
} // namespace velmor
