#include "scene/StrokePainter.h"

#include "RandomImages.h"
#include "image/paint/ImageChange.h"
#include "image/paint/Tools.h"
#include "platform/files/Profile.h"
#include "scene/Settings.h"

#include <gtest/gtest.h>

namespace velmor::testing {
namespace {

class StrokePainterTest : public ::testing::Test {
protected:
    StrokePainterTest() {
        model.celImg = RandomCel(random, 150, 130);
        Sprinkle(model.celImg, random, 30);
        model.celImg.SetModified(false);
        settings.pens = {true, 100, 300};
        settings.brushes = {true, 10, 50};
    }
    bool Press(CelTool tool, const CStrokePoint& at, bool isPressed = true) {
        return painter.Press(tool, settings, isPressed, at, 0.5);
    }
    CPaintResult Move(const CStrokePoint& to) { return painter.Move({&to, 1}); }

    std::mt19937 random{3};
    CSceneModel model;
    CCelPainting painting{model};
    CStrokePainter painter{painting};
    CPenSettings settings;
};

TEST_F(StrokePainterTest, PressureWidensEachToolBetweenItsTwoSizes) {
    const struct {
        CelTool tool;
        TipAction action;
        double least, largest; ///< widths
    } cases[] = {{CelTool::Pen, TipAction::Ink, 5, 15},
                 {CelTool::Eraser, TipAction::Erase, 1.9, 9.5},
                 {CelTool::LineBrush, TipAction::Recolor, 1.9, 9.5}};
    model.paint.pen = 2;
    model.paint.brush = 2;
    model.paint.foreground = {10, 20, 200, 255};
    for (const auto& [tool, action, least, largest] : cases) {
        CCelImg expected = model.celImg;
        const CCelImg before = expected;
        CRoundTip tip(action, action == TipAction::Erase ? model.paint.background : model.paint.foreground);
        // With two points the curve is straight; it is cut into pieces of a pixel.
        for (int i = 0; i <= 60; ++i)
            tip.MoveTo(expected, {{20.25 + i, 40.75}, (least + (largest - least) * i / 60) / 2});
        ASSERT_TRUE(Press(tool, {{20.25, 40.75}, 0}));
        Move({{80.25, 40.75}, 1});
        painter.Release({80.25, 40.75});
        EXPECT_TRUE(AreSame(model.celImg, expected));
        EXPECT_FALSE(painting.IsPainting());
        CCelImg back = model.celImg;
        EXPECT_TRUE(CImageChange(painting.PaintedOver(), back).Apply(back, ChangeDirection::Back).has_value());
        EXPECT_TRUE(Differences(back, before).IsEmpty()) << "undo has all that was painted over";
    }
}

TEST_F(StrokePainterTest, ADotIsPaintedWithItsPressure) {
    CCelImg expected = model.celImg;
    CRoundTip(TipAction::Ink, {}).MoveTo(expected, {{50.5, 60.5}, 1.1});
    ASSERT_TRUE(Press(CelTool::Pen, {{50.5, 60.5}, 0.6}));
    painter.Release({50.5, 60.5});
    EXPECT_TRUE(AreSame(model.celImg, expected));
}

TEST_F(StrokePainterTest, AMouseDrawsTheToolsStampsAlongTheStabilizedWay) {
    settings.stabilizer = StabilizerKind::String;
    settings.stabilizerLength = 40; // of half a pixel each
    CCelImg expected = model.celImg;
    PenStroke(expected, {20, 51}, {100, 51}, 0);
    ASSERT_TRUE(Press(CelTool::Pen, {{20.5, 50.5}, 1}, false));
    EXPECT_TRUE(Move({{39.5, 50.5}, 1}).changed.IsEmpty()) << "the string sags";
    Move({{100.5, 50.5}, 1});
    EXPECT_FALSE(model.celImg.IsLine(90, 51) && !expected.IsLine(90, 51));
    painter.Release({100.5, 50.5});
    EXPECT_TRUE(AreSame(model.celImg, expected));

    expected = model.celImg;
    PenStroke(expected, {120, 100}, {120, 100}, 0);
    ASSERT_TRUE(Press(CelTool::Pen, {{120.5, 99.5}, 1}, false));
    painter.Release({120.5, 99.5});
    EXPECT_TRUE(AreSame(model.celImg, expected)) << "a dot is the tool's own";
}

TEST_F(StrokePainterTest, OnlyWhatIsChosenMakesAStrokeAnotherOne) {
    using enum CelTool;
    settings.brushes.isOn = false;
    EXPECT_TRUE(CStrokePainter::IsWanted(settings, Pen, true));
    EXPECT_FALSE(CStrokePainter::IsWanted(settings, Pen, false)) << "a mouse";
    EXPECT_FALSE(CStrokePainter::IsWanted(settings, Eraser, true));
    settings.stabilizer = StabilizerKind::Weighted;
    EXPECT_TRUE(CStrokePainter::IsWanted(settings, Eraser, false));
    EXPECT_FALSE(CStrokePainter::IsWanted({}, Pen, true)) << "as the program comes";
}

TEST(PenSettingsTest, AreRememberedAndUnusableNumbersAreNotTaken) {
    CProfile profile;
    EXPECT_EQ(ReadPenSettings(profile), CPenSettings()) << "nothing is on";
    CPenSettings settings;
    settings.pens = {true, 5, 250};
    settings.brushes = {true, 100, 30};
    settings.curve = {{0.1, 0.9}, {0.25, 1}};
    settings.stabilizer = StabilizerKind::Weighted;
    settings.stabilizerLength = 77;
    EXPECT_FALSE(FaultOf(settings));
    WritePenSettings(profile, settings);
    EXPECT_EQ(ReadPenSettings(profile), settings);
    WritePenSettings(profile, WithStabilizerToggled(settings, profile));
    EXPECT_EQ(ReadPenSettings(profile).stabilizer, StabilizerKind::None);
    EXPECT_EQ(WithStabilizerToggled(ReadPenSettings(profile), profile), settings) << "as it was last";
    EXPECT_FALSE(WithPressureToggled(settings).HasPressure());
    Set(profile, setting::penLeast, -4);
    Set(profile, setting::stabilizerLength, 1 << 30);
    Set(profile, setting::stabilizer, 9);
    Set(profile, setting::pressureCurveX1, -700);
    EXPECT_FALSE(FaultOf(ReadPenSettings(profile)));
    settings.pens.least = 0;
    EXPECT_TRUE(FaultOf(settings));
    settings.pens.least = 1;
    settings.stabilizerLength = 501;
    EXPECT_TRUE(FaultOf(settings));
}

} // namespace
} // namespace velmor::testing
