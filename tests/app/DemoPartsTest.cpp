#include "app/cli/ConsolePrompter.h"
#include "app/demo/CelDrawing.h"
#include "app/demo/DemoPrompter.h"
#include "app/demo/Region.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace velmor::demo {
namespace {

const CCurve horseshoe = Tube(Arc({100, 100}, 60, 60, 0, 270), 8);

TEST(DemoRegion, RunsCoverTheInside) {
    int pixels = 0;
    for (const CRun& run : RunsInside(Ellipse({50.3, 40.7}, 30, 20)))
        pixels += run.endX - run.x;
    EXPECT_NEAR(pixels, std::numbers::pi * 30 * 20, 12);
    for (const CRun& run : RunsInside(horseshoe))
        for (const int x : {run.x, run.endX - 1}) {
            EXPECT_TRUE(IsInside(horseshoe, {x + 1e-6, run.row + 1e-6})) << x << ", " << run.row;
            EXPECT_NEAR(std::hypot(x - 100, run.row - 100), 60, 8.6);
        }
}

// A curve that goes around a place twice, as tubes in tight bends do, leaves no hole there.
TEST(DemoRegion, OverlapsAreInside) {
    const CCurve twice = Joined(Ellipse({50, 50}, 20, 20), Ellipse({50, 50}, 10, 10));
    EXPECT_TRUE(IsInside(twice, {50, 50}));
    EXPECT_TRUE(IsInside(twice, {65, 50}));
    EXPECT_FALSE(IsInside(twice, {75, 50}));
}

TEST(DemoRegion, HeartKeepsClearOfTheCurve) {
    EXPECT_TRUE(IsInside(horseshoe, Heart(horseshoe)));
    EXPECT_GT(Clearance(horseshoe, Heart(horseshoe)), 5);
    const CCurve held = HeldInside(Ellipse({100, 160}, 40, 40), horseshoe);
    for (const CSpot& spot : held)
        EXPECT_TRUE(IsInside(horseshoe, spot) || Clearance(horseshoe, spot) < 1e-6);
}

class DemoDrawing : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(cel.CreateCel(200, 200, "unused.bit")); }
    void TearDown() override { cel.SetModified(false); }

    static constexpr CColor air{128, 128, 128, 0};
    static constexpr CColor red{0, 0, 255, 255};
    static constexpr CColor blue{255, 0, 0, 255};
    CCelImg cel;
};

TEST_F(DemoDrawing, LaterShapesCoverEarlierOnes) {
    CCelDrawing drawing(cel, air);
    drawing.Shape(Ellipse({80, 100}, 50, 50), red);
    drawing.Shape(Ellipse({130, 100}, 50, 50), blue);
    EXPECT_EQ(cel.ColorAt(50, 100), red);
    EXPECT_EQ(cel.ColorAt(130, 100), blue); // on the first one's outline
    EXPECT_FALSE(cel.IsLine(130, 100));
    EXPECT_TRUE(cel.IsLine(80, 100)); // the second one's outline
    EXPECT_EQ(cel.ColorAt(2, 2), air);
}

TEST_F(DemoDrawing, UnionHasOneOutline) {
    CCelDrawing drawing(cel, air);
    drawing.Shape({Ellipse({80, 100}, 50, 50), Ellipse({130, 100}, 50, 50)}, red);
    for (int x = 40; x <= 170; ++x)
        ASSERT_EQ(cel.ColorAt(x, 100), red) << x;
    EXPECT_EQ(cel.ColorAt(105, 190), air);
    EXPECT_TRUE(cel.IsLine(28, 100));
}

TEST_F(DemoDrawing, MarkingStaysInsideItsShape) {
    CCelDrawing drawing(cel, air);
    const CCurve shape = Ellipse({100, 100}, 60, 60);
    drawing.Shape(shape, red);
    drawing.Marking(Ellipse({160, 100}, 50, 30), blue, shape);
    EXPECT_EQ(cel.ColorAt(140, 100), blue);
    EXPECT_EQ(cel.ColorAt(110, 100), blue) << "its own outline is gone";
    EXPECT_EQ(cel.ColorAt(90, 100), red);
    EXPECT_EQ(cel.ColorAt(180, 100), air);
    EXPECT_TRUE(cel.IsLine(160, 100));
}

class DemoPrompter : public ::testing::Test {
protected:
    void SetUp() override { ::testing::internal::CaptureStderr(); }
    void TearDown() override { EXPECT_EQ(::testing::internal::GetCapturedStderr().empty(), !prompter.HasFailed()); }

    CConsolePrompter console;
    CDemoPrompter prompter{console};
};

TEST_F(DemoPrompter, AnswersInOrder) {
    prompter.Expect(std::string("Fox"));
    prompter.Expect(3);
    EXPECT_EQ(prompter.Ask(CNameRequest{}), "Fox");
    EXPECT_EQ(prompter.Ask(CLevelRequest{}), 3);
    prompter.RequireAllAsked();
    EXPECT_FALSE(prompter.HasFailed());
}

TEST_F(DemoPrompter, FailsOnAnotherDialogAndThenCancelsAll) {
    prompter.Expect(3);
    EXPECT_EQ(prompter.Ask(CNameRequest{}), std::nullopt);
    EXPECT_TRUE(prompter.HasFailed());
    EXPECT_EQ(prompter.Ask(CLevelRequest{}), std::nullopt);
}

TEST_F(DemoPrompter, FailsWhenADialogDoesNotCome) {
    prompter.Expect(3);
    prompter.RequireAllAsked();
    EXPECT_TRUE(prompter.HasFailed());
}

TEST_F(DemoPrompter, FailsOnRefusedValuesAndQuestions) {
    prompter.Expect(std::string("?"));
    EXPECT_EQ(prompter.Ask(CNameRequest{NameKind::Level, "",
                                        [this](const std::string&) {
                                            prompter.ShowMessage("refused");
                                            return false;
                                        }}),
              std::nullopt);
    EXPECT_TRUE(prompter.HasFailed());
    CDemoPrompter asked(console);
    EXPECT_FALSE(asked.AskYesNo("Cel Exists, Do you want to overwrite it ?"));
    EXPECT_TRUE(asked.HasFailed());
}

} // namespace
} // namespace velmor::demo
