#include "xsheet/CelForms.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>

namespace velmor {

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

CXSheetCel CelTurnedBy(double radians) {
    return CXSheetCel::FromFile("Man", "1", {0, 0, 1, 1, radians}, 0, 1, 1, {10, 10});
}

} // namespace

TEST(CelForms, ShowsTurnsAndDegreesWithTheSignOfTheRotation) {
    CCelDataForm form;
    for (const CTurns turned : {CTurns{0, -90}, CTurns{2, 5}, CTurns{-2, -5}, CTurns{0, 359}}) {
        form.rotation = turned;
        CXSheetCel cel = CelTurnedBy(0);
        ApplyCelDataForm(form, cel);
        EXPECT_EQ(CelDataFormOf(cel).rotation.turns, turned.turns);
        EXPECT_NEAR(CelDataFormOf(cel).rotation.degrees, turned.degrees, 0.011);
        EXPECT_EQ(CameraFormOf(CameraOf({0, 0, 100, turned})).rotation.turns, turned.turns);
        EXPECT_NEAR(CameraFormOf(CameraOf({0, 0, 100, turned})).rotation.degrees, turned.degrees, 0.011);
    }
    EXPECT_EQ(CelDataFormOf(CelTurnedBy(-std::numbers::pi / 2)).rotation, (CTurns{0, -90}));
}

TEST(CelForms, CelAndCameraReckonWithDifferentPi) {
    const double quarter = std::numbers::pi / 2;
    EXPECT_DOUBLE_EQ(CelDataFormOf(CelTurnedBy(quarter)).rotation.degrees, 89.99);
    EXPECT_DOUBLE_EQ(CameraFormOf({0, 0, quarter, 1}).rotation.degrees, 90);

    CXSheetCel cel = CelTurnedBy(0);
    CCelDataForm form;
    form.rotation = {0, 180};
    ApplyCelDataForm(form, cel);
    EXPECT_DOUBLE_EQ(cel.Rotation(), 3.14159265359);
    EXPECT_DOUBLE_EQ(CameraOf({0, 0, 100, {0, 180}}).rotation, std::numbers::pi);
}

TEST(CelForms, SurvivesRotationsThatAreNoAngles) {
    EXPECT_EQ(CelDataFormOf(CelTurnedBy(nan)).rotation, CTurns{});
    EXPECT_EQ(CelDataFormOf(CelTurnedBy(-HUGE_VAL)).rotation, CTurns{});
    EXPECT_EQ(CameraFormOf({0, 0, -1e300, 1}).rotation.turns, -std::numeric_limits<int>::max());
}

TEST(CelForms, RoundsDownWhatIsShown) {
    const CXSheetCel cel =
        CXSheetCel::FromFile("Man", "1", {-1.001, 2.999, 1.25, 1.2501, 0}, 33.339, 2.9, 2.1, {10, 10});
    const CCelDataForm form = CelDataFormOf(cel);
    EXPECT_DOUBLE_EQ(form.posX, -1.01);
    EXPECT_DOUBLE_EQ(form.posY, 2.99);
    EXPECT_DOUBLE_EQ(form.transparency, 33.33);
    EXPECT_EQ(form.blurX, 2);
    // The values, not what is shown of them, decide whether the cel dialog keeps the aspect.
    EXPECT_DOUBLE_EQ(form.scaleY, form.scaleX);
    EXPECT_FALSE(form.preserveScale);
    EXPECT_FALSE(form.preserveBlur);
    EXPECT_EQ(BlurFormOf(cel), (CBlurForm{2, 2, true}));
    EXPECT_DOUBLE_EQ(CameraFormOf({0, 0, 0, 1.25}).zoomPercent, 125);
}

TEST(CelForms, YFollowsXWhileTheAspectIsPreserved) {
    CXSheetCel cel = CelTurnedBy(0);
    CCelDataForm form{1, 2, 3, 4, true, {}, 5, 6, false, 7};
    ApplyCelDataForm(form, cel);
    EXPECT_EQ(cel.Transform(), (CCelTransform{1, 2, 3, 3, 0}));
    EXPECT_EQ(cel.BlurX(), 5);
    EXPECT_EQ(cel.BlurY(), 6);
    EXPECT_EQ(cel.Transparency(), 7);
    ApplyBlurForm({8, 9, true}, cel);
    EXPECT_EQ(cel.BlurY(), 8);
}

TEST(CelForms, RefusesWhatIsOutOfRange) {
    EXPECT_TRUE(CheckCelDataForm({}));
    EXPECT_TRUE(CheckBlurForm({1, 50, false}));
    EXPECT_TRUE(CheckBlurForm({1, 99, true})); // Y is not in use
    for (const double blur : {0.99, 50.01, nan}) {
        EXPECT_FALSE(CheckBlurForm({blur, 1, true}));
        EXPECT_FALSE(CheckBlurForm({1, blur, false}));
    }
    for (const double transparency : {-0.01, 100.01, nan})
        EXPECT_FALSE(CheckTransparency(transparency));
    CCelDataForm form;
    form.posX = nan;
    EXPECT_FALSE(CheckCelDataForm(form));
}

} // namespace velmor
