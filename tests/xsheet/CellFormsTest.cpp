#include "xsheet/CellForms.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>

namespace velmor {

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

CXSheetCell CelTurnedBy(double radians) {
    return CXSheetCell::FromFile("Man", "1", {0, 0, 1, 1, radians}, 0, 1, 1, {10, 10});
}

} // namespace

TEST(CellForms, ShowsTurnsAndDegreesWithTheSignOfTheRotation) {
    CCellDataForm form;
    for (const CTurns turned : {CTurns{0, -90}, CTurns{2, 5}, CTurns{-2, -5}, CTurns{0, 359}}) {
        form.rotation = turned;
        CXSheetCell cell = CelTurnedBy(0);
        ApplyCellDataForm(form, cell);
        EXPECT_EQ(CellDataFormOf(cell).rotation.turns, turned.turns);
        EXPECT_NEAR(CellDataFormOf(cell).rotation.degrees, turned.degrees, 0.011);
        EXPECT_EQ(CameraFormOf(CameraOf({0, 0, 100, turned})).rotation.turns, turned.turns);
        EXPECT_NEAR(CameraFormOf(CameraOf({0, 0, 100, turned})).rotation.degrees, turned.degrees, 0.011);
    }
    EXPECT_EQ(CellDataFormOf(CelTurnedBy(-std::numbers::pi / 2)).rotation, (CTurns{0, -90}));
}

TEST(CellForms, CelAndCameraReckonWithDifferentPi) {
    const double quarter = std::numbers::pi / 2;
    EXPECT_DOUBLE_EQ(CellDataFormOf(CelTurnedBy(quarter)).rotation.degrees, 89.99);
    EXPECT_DOUBLE_EQ(CameraFormOf({0, 0, quarter, 1}).rotation.degrees, 90);

    CXSheetCell cell = CelTurnedBy(0);
    CCellDataForm form;
    form.rotation = {0, 180};
    ApplyCellDataForm(form, cell);
    EXPECT_DOUBLE_EQ(cell.Rotation(), 3.14159265359);
    EXPECT_DOUBLE_EQ(CameraOf({0, 0, 100, {0, 180}}).rotation, std::numbers::pi);
}

TEST(CellForms, SurvivesRotationsThatAreNoAngles) {
    EXPECT_EQ(CellDataFormOf(CelTurnedBy(nan)).rotation, CTurns{});
    EXPECT_EQ(CellDataFormOf(CelTurnedBy(-HUGE_VAL)).rotation, CTurns{});
    EXPECT_EQ(CameraFormOf({0, 0, -1e300, 1}).rotation.turns, -std::numeric_limits<int>::max());
}

TEST(CellForms, RoundsDownWhatIsShown) {
    const CXSheetCell cell =
        CXSheetCell::FromFile("Man", "1", {-1.001, 2.999, 1.25, 1.2501, 0}, 33.339, 2.9, 2.1, {10, 10});
    const CCellDataForm form = CellDataFormOf(cell);
    EXPECT_DOUBLE_EQ(form.posX, -1.01);
    EXPECT_DOUBLE_EQ(form.posY, 2.99);
    EXPECT_DOUBLE_EQ(form.transparency, 33.33);
    EXPECT_EQ(form.blurX, 2);
    // The values, not what is shown of them, decide whether the cel dialog keeps the aspect.
    EXPECT_DOUBLE_EQ(form.scaleY, form.scaleX);
    EXPECT_FALSE(form.preserveScale);
    EXPECT_FALSE(form.preserveBlur);
    EXPECT_EQ(BlurFormOf(cell), (CBlurForm{2, 2, true}));
    EXPECT_DOUBLE_EQ(CameraFormOf({0, 0, 0, 1.25}).zoomPercent, 125);
}

TEST(CellForms, YFollowsXWhileTheAspectIsPreserved) {
    CXSheetCell cell = CelTurnedBy(0);
    CCellDataForm form{1, 2, 3, 4, true, {}, 5, 6, false, 7};
    ApplyCellDataForm(form, cell);
    EXPECT_EQ(cell.Transform(), (CCellTransform{1, 2, 3, 3, 0}));
    EXPECT_EQ(cell.BlurX(), 5);
    EXPECT_EQ(cell.BlurY(), 6);
    EXPECT_EQ(cell.Transparency(), 7);
    ApplyBlurForm({8, 9, true}, cell);
    EXPECT_EQ(cell.BlurY(), 8);
}

TEST(CellForms, RefusesWhatIsOutOfRange) {
    EXPECT_TRUE(CheckCellDataForm({}));
    EXPECT_TRUE(CheckBlurForm({1, 50, false}));
    EXPECT_TRUE(CheckBlurForm({1, 99, true})); // Y is not in use
    for (const double blur : {0.99, 50.01, nan}) {
        EXPECT_FALSE(CheckBlurForm({blur, 1, true}));
        EXPECT_FALSE(CheckBlurForm({1, blur, false}));
    }
    for (const double transparency : {-0.01, 100.01, nan})
        EXPECT_FALSE(CheckTransparency(transparency));
    CCellDataForm form;
    form.posX = nan;
    EXPECT_FALSE(CheckCellDataForm(form));
}

} // namespace velmor
