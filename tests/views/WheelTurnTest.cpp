#include "views/WheelTurn.h"

#include <QWheelEvent>
#include <gtest/gtest.h>

namespace velmor {
namespace {

QWheelEvent Turn(QPoint pixels, QPoint angle, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    return {QPointF(), QPointF(), pixels, angle, Qt::NoButton, modifiers, Qt::NoScrollPhase, false};
}

TEST(WheelTurnTest, PixelsAreTheDevicesOrWhatTheAngleMakes) {
    CWheelTurn wheel;
    EXPECT_EQ(wheel.PixelsOf(Turn({-3, 7}, {-120, 120})), (CPoint{-3, 7}));
    EXPECT_EQ(wheel.PixelsOf(Turn({}, {0, 120})), (CPoint{0, 48}));
    EXPECT_EQ(wheel.PixelsOf(Turn({}, {0, -120}, Qt::ShiftModifier)), (CPoint{-48, 0})) << "sideways";
    int scrolled = 0;
    for (int part = 0; part < 120; ++part)
        scrolled += wheel.PixelsOf(Turn({}, {0, 1})).y;
    EXPECT_NEAR(scrolled, 48, 1) << "a notch in 120 parts";
}

TEST(WheelTurnTest, ANotchIsALevelWithinBounds) {
    CWheelTurn wheel;
    EXPECT_EQ(wheel.ZoomAfter(Turn({}, {0, 60}), CZoomLevel(1)), CZoomLevel(1));
    EXPECT_EQ(wheel.ZoomAfter(Turn({}, {0, 60}), CZoomLevel(1)), CZoomLevel(2));
    EXPECT_EQ(wheel.ZoomAfter(Turn({}, {0, 120 * 500}), CZoomLevel(2)), CZoomLevel(64));
    EXPECT_EQ(wheel.ZoomAfter(Turn({}, {0, -120 * 500}), CZoomLevel(2)), CZoomLevel(-14));
    EXPECT_EQ(wheel.ZoomAfter(Turn({}, {0, -120}), CZoomLevel(-100)), CZoomLevel(-100)) << "not beyond";
    EXPECT_EQ(wheel.ZoomAfter(Turn({}, {0, 120}), CZoomLevel(-100)), CZoomLevel(-99)) << "back";
}

} // namespace
} // namespace velmor
