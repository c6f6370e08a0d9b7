#include "xsheet/FieldChart.h"
#include "xsheet/CameraMap.h"
#include "xsheet/CellGeometry.h"

#include <gtest/gtest.h>
#include <limits>

using namespace velmor;

TEST(FieldChart, FieldsFramesAndSafeAreasShareTheMiddle) {
    constexpr CSize frame{768, 576};
    EXPECT_EQ(FieldOf(frame, 12, 12), WholeFrame(frame));
    EXPECT_EQ(FieldOf(frame, 3, 12), (CRealRect{288, 216, 480, 360}));
    EXPECT_EQ(FieldOf(frame, 4, 16), FieldOf(frame, 3, 12));
    EXPECT_EQ(FrameOfRatio(frame, 16.0 / 9), (CRealRect{0, 72, 768, 504}));
    EXPECT_EQ(FrameOfRatio({1920, 1080}, 4.0 / 3), (CRealRect{240, 0, 1680, 1080}));
    EXPECT_EQ(SafeArea({240, 0, 1680, 1080}, 50), (CRealRect{600, 270, 1320, 810}));
    EXPECT_EQ(SafeArea(WholeFrame(frame), 900), WholeFrame(frame));
}

TEST(CameraMap, ShowsWhatOutlinesShowAndLeadsBack) {
    constexpr CSize frame{767, 576};
    const CCameraFrame camera{13.5, -40, 0.8, 1.7};
    const CCameraMap map(camera, frame);
    const CXSheetCell cell = CXSheetCell::FromFile("F", "1", {420, 111, 1, 1, 0}, 0, 1, 1, {10, 10});
    const CPoint drawn = CellCentre(cell, camera, frame);
    const CRealPoint shown = map.ToView({420, 111});
    EXPECT_NEAR(shown.x, drawn.x, 4);
    EXPECT_NEAR(shown.y, drawn.y, 4);
    EXPECT_NEAR(map.ToStage(shown).x, 420, 1e-9);
    EXPECT_NEAR(map.ToStage(shown).y, 111, 1e-9);
    const CCameraMap still({0, 0, 0, 0}, frame); // shows nothing, and hurts nobody
    EXPECT_EQ(still.ToStage({5, 6}), (CRealPoint{5, 6}));
    const double none = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(CCameraMap({none, 0, 0, 1}, frame).ToView({5, 6}), (CRealPoint{5, 6}));
}

TEST(CameraMap, OneToOneWhatIsUnderThePointerStaysThere) {
    constexpr CSize frame{768, 576};
    for (CCameraFrame camera : {CCameraFrame{}, {30, -8, 1.2, 0.5}, {0, 5, -2, 3}}) {
        const CRealPoint before = CCameraMap(camera, frame).ToStage({100, 200});
        for (int step = 0; step < 10; ++step)
            ApplyCameraInputOneToOne(camera, InputMode::Move, 3, -1, frame);
        const CRealPoint after = CCameraMap(camera, frame).ToView(before);
        EXPECT_NEAR(after.x, 130, 1e-9);
        EXPECT_NEAR(after.y, 190, 1e-9);
    }
    CCameraFrame none{1, 2, 0, 0};
    ApplyCameraInputOneToOne(none, InputMode::Move, 3, -1, frame);
    EXPECT_EQ(none, (CCameraFrame{1, 2, 0, 0}));
}
