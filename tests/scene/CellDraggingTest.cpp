#include "scene/CellDragging.h"
#include "XSheetScene.h"
#include "scene/CameraAids.h"
#include "scene/Settings.h"

namespace velmor::testing {

namespace {

class CCellDraggingTest : public CXSheetScene {
protected:
    void MoveTo(double x) {
        dragging.Change("Test", [x](CXSheet& xsheet) {
            static_cast<void>(xsheet.MutableCell(0, 0).SetPos(xsheet.Cell(0, 0).PosX() + x, 0));
        });
    }

    CCellDragging dragging{Context()};
};

} // namespace

TEST_F(CCellDraggingTest, ADragIsOneStepThatStartsFromThePressEachTime) {
    Put(0, 0, "1");
    const CScene before = scene;
    dragging.Begin();
    for (const double x : {5.0, 40.0, 20.0})
        MoveTo(x);
    dragging.End();
    EXPECT_EQ(scene.xsheet.Cell(0, 0).PosX(), 384 + 20);
    EXPECT_EQ(TakeHints(), (Hints{4, 4, 4, 260}));
    EXPECT_EQ(model.history.Steps().size(), 1U);
    MoveTo(3);
    EXPECT_EQ(scene.xsheet.Cell(0, 0).PosX(), 384 + 20) << "it is over";
    Undo();
    EXPECT_EQ(scene, before);
    Redo();
    EXPECT_EQ(scene.xsheet.Cell(0, 0).PosX(), 384 + 20);
}

TEST_F(CCellDraggingTest, WhatIsGivenUpLeavesNothing) {
    Put(0, 0, "1");
    const CScene before = scene;
    dragging.Begin();
    MoveTo(5);
    dragging.GiveUp();
    EXPECT_EQ(scene, before);
    EXPECT_FALSE(CanUndo(model));
    dragging.Begin(); // a click
    dragging.End();
    EXPECT_FALSE(CanUndo(model));
    EXPECT_EQ(TakeHints(), (Hints{4, 4}));
}

TEST_F(CCellDraggingTest, ADragThatSomethingElseHasCrossedChangesNoMore) {
    Put(0, 0, "1");
    dragging.Begin();
    MoveTo(5);
    scene.xsheet.SetFrameCount(3);
    MoveTo(90);
    dragging.GiveUp();
    EXPECT_EQ(scene.xsheet.FrameCount(), 3);
    EXPECT_EQ(scene.xsheet.Cell(0, 0).PosX(), 384 + 5);
}

TEST_F(CCellDraggingTest, WhatAKeyDoesDuringADragIsAStepOfItsOwn) {
    Put(0, 0, "1");
    const CScene before = scene;
    dragging.Begin();
    MoveTo(5);
    prompter.Answer(std::string("New"));
    sheet.AddLevel();
    MoveTo(90);
    dragging.End();
    EXPECT_EQ(scene.xsheet.LevelCount(), 2);
    Undo();
    EXPECT_EQ(scene.xsheet.LevelCount(), 1);
    EXPECT_EQ(scene.xsheet.Cell(0, 0).PosX(), 384 + 5);
    Undo();
    EXPECT_EQ(scene, before);
}

TEST_F(CCellDraggingTest, CellsComeToStandAlongADrawnPath) {
    for (const int frame : {2, 3, 4, 6, 8, 9})
        Put(0, frame, "1");
    static_cast<void>(scene.xsheet.MutableCell(0, 2).SetPos(0, 0));
    static_cast<void>(scene.xsheet.MutableCell(0, 8).SetPos(120, 0));
    const CScene before = scene;
    const std::vector<CRealPoint> drawn{{0, 0}, {0, 60}, {120, 60}, {120, 0}};
    EXPECT_FALSE(dragging.KeysOfPath());
    EXPECT_EQ(prompter.TakeMessages().size(), 1U);
    model.selection = {0, 0, 1, 8};
    ASSERT_EQ(dragging.KeysOfPath(), (CInbetweenKeys{2, 8}));
    dragging.PlaceAlong({2, 8}, drawn);
    EXPECT_NEAR(scene.xsheet.Cell(0, 3).PosY(), 40, 12);
    EXPECT_GT(scene.xsheet.Cell(0, 6).PosX(), 60);
    for (const int frame : {2, 5, 8, 9})
        EXPECT_EQ(scene.xsheet.Cell(0, frame), before.xsheet.Cell(0, frame)) << frame;
    EXPECT_EQ(model.history.Steps().back().heading.name, "Draw Path");
    // At the pace that was chosen last.
    const double even = scene.xsheet.Cell(0, 3).PosY();
    Undo();
    EXPECT_EQ(scene, before);
    Set(profile, setting::lastInbetweenType, static_cast<int>(InbetweenType::SlowOut));
    dragging.PlaceAlong({2, 8}, drawn);
    EXPECT_LT(scene.xsheet.Cell(0, 3).PosY(), even / 2);
    dragging.PlaceAlong({90, 5000}, drawn);
    dragging.PlaceAlong({2, 8}, {});
    EXPECT_EQ(prompter.TakeMessages(), Texts{});
}

TEST_F(CCellDraggingTest, ChoicesOfTheCameraViewAreRemembered) {
    CCameraAids aids(Context());
    EXPECT_EQ(aids.Choices(), CCameraAidChoices()) << "nothing as it comes";
    CCameraAidChoices choices;
    choices.handles = choices.titleSafe = true;
    choices.fieldsOnStage = false;
    choices.fields = 16;
    aids.Change(choices);
    EXPECT_EQ(CCameraAids(Context()).Choices(), choices);
    EXPECT_EQ(TakeHints(), Hints{4});
    aids.Change(choices);
    EXPECT_EQ(TakeHints(), Hints{});
    Set(profile, setting::cameraFields, -3);
    Set(profile, setting::titleSafePercent, 0);
    EXPECT_EQ(CCameraAids(Context()).Choices().fields, 0);
    EXPECT_EQ(CCameraAids(Context()).Choices().titlePercent, 1);
}

} // namespace velmor::testing
