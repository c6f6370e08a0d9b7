#include "scene/exposing/SheetTiming.h"
#include "XSheetScene.h"
#include "scene/Settings.h"
#include "scene/exposing/Exposing.h"

#include "scene/DialogRequests.h"

#include <initializer_list>

namespace velmor::testing {
namespace {

using Kind = CTypedExposure::Kind;

class SheetTimingTest : public CXSheetScene {
protected:
    CSheetTiming timing{Context(), cursor};
    CExposing exposing{Context(), cursor, timing};

    void SetUp() override {
        CXSheetScene::SetUp();
        SetLevels(2, 20);
        for (int frame = 0; frame < 6; ++frame)
            Put(0, frame, std::string(1, "AABBCC"[frame]));
    }
    void MakeCels(const std::string& celFolder, std::initializer_list<const char*> names) {
        ASSERT_TRUE(CreateFolder(model.Paths().CelFolder(celFolder)));
        for (const char* name : names) {
            CCelImg cel;
            ASSERT_TRUE(cel.CreateCel(40, 30, model.Paths().CelFile(celFolder, name)));
            ASSERT_TRUE(cel.SaveCel());
        }
    }
};

TEST_F(SheetTimingTest, CommandsEditTheSelectionAsOneStep) {
    model.selection = {0, 0, 0, 5};
    timing.ExposeOn(1);
    EXPECT_EQ(Row(0, 8), "ABC.....");
    EXPECT_EQ(model.selection, (CXSheetSelection{0, 0, 0, 2}));
    EXPECT_EQ(hints, Hints{268});
    timing.Swing();
    EXPECT_EQ(Row(0, 8), "ABCB....");
    timing.ExposeOn(3);
    EXPECT_EQ(Row(0, 13), "AAABBBCCCBBB.");
    model.selection = {0, 0, 5, 2};
    timing.ExposeOn(1);
    EXPECT_EQ(Row(0, 13), "AAABBBCCCBBB.") << "start and end stand the wrong way round";
}

TEST_F(SheetTimingTest, WhatFollowsIsPushedOrEatenAsChosen) {
    timing.SetWhatFollows(Following::Eat);
    EXPECT_EQ(Get(profile, setting::exposurePushes), 0);
    model.selection = {0, 0, 0, 1};
    timing.ExposeOn(4);
    EXPECT_EQ(Row(0, 7), "AAAACC.");
}

TEST_F(SheetTimingTest, TheOutcomeIsShownBeforeItIsDone) {
    model.selection = {0, 0, 0, 5};
    prompter.Answer(3);
    timing.AskAndStretch();
    const auto request = std::any_cast<CFrameCountRequest>(prompter.lastRequest);
    EXPECT_EQ(request.initial, 6);
    EXPECT_EQ(Row(0, 8), "ABC.....");
    EXPECT_EQ(timing.Outcome(), nullptr);

    const CScene before = scene;
    hints.clear();
    timing.ShowOutcome({SheetEditKind::Shift, {0, 0, 0, 2}, 2});
    ASSERT_NE(timing.Outcome(), nullptr);
    EXPECT_EQ(timing.Outcome()->xsheet.Cell(0, 2).CelName(), "A");
    EXPECT_EQ(scene, before);
    EXPECT_EQ(hints, Hints{8});
    Put(0, 9, "D");
    EXPECT_EQ(timing.Outcome(), nullptr) << "it is that of another scene";
    timing.ShowOutcome({SheetEditKind::Shift, {0, 2, 0, 2}, 2});
    EXPECT_EQ(timing.Outcome(), nullptr) << "there is no such level";
}

TEST_F(SheetTimingTest, NumbersOutOfRangeAreRefusedAndCancelLeavesAllAsItWas) {
    const CScene before = scene;
    for (const auto ask : {&CSheetTiming::AskAndShift, &CSheetTiming::AskAndRoll, &CSheetTiming::AskAndStretch,
                           &CSheetTiming::AskAndInsertTime, &CSheetTiming::AskAndDeleteTime}) {
        prompter.Answer(-5000);
        prompter.Answer(5000);
        prompter.Cancel();
        (timing.*ask)();
        EXPECT_EQ(prompter.TakeMessages().size(), 2U);
    }
    EXPECT_EQ(scene, before);
    EXPECT_EQ(timing.Outcome(), nullptr);
    model.sceneOpen = false;
    timing.AskAndInsertTime();
    timing.AskAndShift();
    timing.ExposeOn(2);
    EXPECT_EQ(scene, before);
}

TEST_F(SheetTimingTest, TimeIsInsertedAtTheCursor) {
    cursor.GoTo({0, 2});
    model.selection = {0, 1, 0, 4};
    static_cast<void>(scene.sounds.Place(3, "Bell"));
    prompter.Answer(2);
    timing.AskAndInsertTime();
    EXPECT_EQ(Row(0, 9), "AA..BBCC.");
    EXPECT_EQ(scene.sounds.All().front().frame, 5);
    EXPECT_EQ(model.selection, (CXSheetSelection{0, 1, 0, 4}));
    hints.clear();
    prompter.Answer(2);
    timing.AskAndDeleteTime();
    EXPECT_EQ(Row(0, 7), "AABBCC.");
    EXPECT_EQ(hints, Hints{396});
}

TEST_F(SheetTimingTest, NumbersNameDrawingsOfTheLevelsFolder) {
    MakeCels("Fox", {"1", "2", "12"});
    MakeCels("Owl", {"1", "Owl12"});
    model.folderName = "Fox";
    cursor.GoTo({1, 0});
    EXPECT_EQ(exposing.Folder(), "Fox");
    EXPECT_EQ(exposing.DrawingsFor("1"), (Texts{"1", "12"}));
    scene.xsheet.MutableCell(1, 3) = CXSheetCell::FromFile("Owl", "1", {}, 0, 1, 1, {1, 1});
    EXPECT_EQ(exposing.Folder(), "Owl") << "the level's";
    scene.xsheet.MutableCell(1, 0) = CXSheetCell::FromFile("Fox", "1", {}, 0, 1, 1, {1, 1});
    EXPECT_EQ(exposing.Folder(), "Fox") << "the nearest above";
    cursor.GoTo({1, 7});
    EXPECT_EQ(exposing.Folder(), "Owl");
    EXPECT_EQ(exposing.DrawingsFor("1"), (Texts{"1", "Owl12"}));

    Set(profile, setting::newDrawingHold, 2);
    EXPECT_TRUE(exposing.Enter({Kind::Drawing, "12", 0}, 0));
    EXPECT_EQ(scene.xsheet.Cell(1, 7).CelName(), "Owl12");
    EXPECT_EQ(scene.xsheet.Cell(1, 8).Size(), (CSize{40, 30}));
    EXPECT_EQ(scene.xsheet.Cell(1, 8).PosX(), model.Scene().geometry.width / 2);
    EXPECT_FALSE(scene.xsheet.Cell(1, 9).IsUsed());
    EXPECT_EQ(model.CursorCell(), (CSheetCell{1, 9}));
    EXPECT_TRUE(exposing.Enter({Kind::Drawing, "1", 0}, -1)) << "the last one";
    EXPECT_EQ(scene.xsheet.Cell(1, 10).CelName(), "Owl12");
    EXPECT_FALSE(exposing.Enter({Kind::Drawing, "5", 0}, 0));
    EXPECT_EQ(model.CursorCell(), (CSheetCell{1, 11}));
}

TEST_F(SheetTimingTest, TypedExposuresGoOnBehindWhatTheyDid) {
    Set(profile, setting::newDrawingHold, 3);
    cursor.GoTo({0, 6});
    EXPECT_TRUE(exposing.Enter({Kind::Hold, "", 0}, 0));
    EXPECT_EQ(Row(0, 11), "AABBCCCCC..");
    EXPECT_EQ(model.cursorFrame, 9);
    cursor.GoTo({0, 3});
    EXPECT_TRUE(exposing.Enter({Kind::Lengthen, "", 0}, 0));
    EXPECT_EQ(Row(0, 11), "AABBBCCCCC.");
    EXPECT_EQ(model.cursorFrame, 5);
    EXPECT_TRUE(exposing.Enter({Kind::SetLength, "", 1}, 0));
    EXPECT_EQ(Row(0, 11), "AABBBC.....");
    EXPECT_EQ(model.cursorFrame, 6);
    EXPECT_FALSE(exposing.Enter({Kind::SetLength, "", 4}, 0)) << "nothing is exposed here";
    cursor.GoTo({0, 0});
    EXPECT_FALSE(exposing.Enter({Kind::Hold, "", 0}, 0));
    EXPECT_TRUE(exposing.Enter({Kind::Empty, "", 1}, 0));
    EXPECT_EQ(Row(0, 11), ".ABBBC.....");
    cursor.GoTo({0, 19});
    EXPECT_TRUE(exposing.Enter({Kind::Empty, "", 0}, 0));
    EXPECT_EQ(model.cursorFrame, 19) << "the sheet ends here";
}

TEST_F(SheetTimingTest, TheChoicesAreRemembered) {
    Set(profile, setting::newDrawingHold, 9);
    EXPECT_EQ(exposing.Step(), 3);
    EXPECT_EQ(exposing.ChoicesText(), "On threes, pushing");
    Set(profile, setting::newDrawingHold, 1);
    timing.SetWhatFollows(Following::Eat);
    EXPECT_EQ(exposing.ChoicesText(), "On ones, eating");
}

} // namespace
} // namespace velmor::testing
