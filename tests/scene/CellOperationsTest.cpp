#include "scene/CellOperations.h"
#include "XSheetScene.h"
#include "scene/CommandState.h"
#include "scene/DialogRequests.h"
#include "scene/Settings.h"

#include <cmath>

namespace velmor::testing {

namespace {

class CCellOperationsTest : public CXSheetScene {
protected:
    CCellOperations cells{Context()};
};

} // namespace

TEST_F(CCellOperationsTest, OutlineAndCentreInTheCameraView) {
    Put(0, 5, "1");
    model.cursorFrame = 5;
    EXPECT_EQ(cells.GetXSheetCelPoints(0),
              (std::array<CPoint, 4>{{{334, 238}, {434, 238}, {434, 338}, {334, 338}}}));
    scene.camera.MutableAt(5).panX = 10;
    EXPECT_EQ(cells.GetXSheetCellCentre(0, 5), (CPoint{394, 288}));
    EXPECT_FALSE(cells.GetXSheetCellCentre(0, 4).has_value());
    EXPECT_FALSE(cells.GetXSheetCellCentre(1, 5).has_value());
    EXPECT_FALSE(cells.GetXSheetCellCentre(0, 100).has_value());
    model.cursorFrame = 4;
    EXPECT_FALSE(cells.GetXSheetCelPoints(0).has_value());
    EXPECT_EQ(prompter.TakeMessages(), Texts{});
    EXPECT_FALSE(cells.GetXSheetCelPoints(1).has_value());
    EXPECT_EQ(prompter.TakeMessages(), Texts{"Internal Error : levelno out of range in GetXSheetCelPoints"});
}

TEST_F(CCellOperationsTest, EditsCelDataOfTheCursorCell) {
    cells.EditCellData(); // empty
    EXPECT_FALSE(prompter.lastRequest.has_value());
    const CXSheetCell before = Put(0, 0, "1");
    cells.EditCellData(); // cancelled
    EXPECT_FALSE(CanUndo(model));
    const CCellDataRequest request = std::any_cast<CCellDataRequest>(prompter.lastRequest);
    EXPECT_EQ(request.cell.name + request.cell.folder + request.cell.level, "1ManDefault");
    EXPECT_EQ(request.cell.frame, 1);

    CCellDataForm form = request.initial;
    form.blurX = 51;
    prompter.Answer(form);
    form.blurX = 2;
    form.posX = 12;
    prompter.Answer(form);
    cells.EditCellData();
    EXPECT_EQ(prompter.TakeMessages().size(), 1U);
    EXPECT_EQ(scene.xsheet.Cell(0, 0).PosX(), 12);
    EXPECT_EQ(scene.xsheet.Cell(0, 0).BlurY(), 2);
    EXPECT_EQ(TakeHints(), Hints{260});
    Undo();
    EXPECT_EQ(scene.xsheet.Cell(0, 0), before);
}

TEST_F(CCellOperationsTest, EditsTransparencyAndBlurOfALevel) {
    SetLevels(2);
    model.cursorFrame = 3;
    cells.OnXSheetDoTrans(2);
    cells.OnXSheetDoBlur(-1);
    EXPECT_EQ(prompter.TakeMessages(), (Texts{"Internal Error : lvlno out of range in OnXSheetDoTrans",
                                              "Internal Error : lvlno out of range in OnXSheetDoBlur"}));
    cells.OnXSheetDoTrans(1);
    cells.OnXSheetDoBlur(1);
    EXPECT_FALSE(prompter.lastRequest.has_value()); // empty cells

    Put(1, 3, "1");
    for (const double transparency : {101.0, 40.0})
        prompter.Answer(transparency);
    cells.OnXSheetDoTrans(1);
    for (const double blurY : {0.0, 4.0})
        prompter.Answer(CBlurForm{3, blurY, false});
    cells.OnXSheetDoBlur(1);
    EXPECT_EQ(prompter.TakeMessages().size(), 2U); // of the values refused
    const CXSheetCell& cell = scene.xsheet.Cell(1, 3);
    EXPECT_EQ(cell.Transparency(), 40);
    EXPECT_EQ(cell.BlurX() * cell.BlurY(), 12);
    EXPECT_EQ(TakeHints(), (Hints{260, 260}));
}

TEST_F(CCellOperationsTest, EffectsAreTriedWhileTheirDialogIsOpen) {
    const CXSheetCell before = Put(0, 0, "1");
    std::vector<double> seen;
    prompter.onDialog = [&] {
        const auto request = std::any_cast<CTransparencyRequest>(prompter.lastRequest);
        for (const double value : {30.0, 999.0, std::nan(""), 70.0}) {
            request.show(value);
            seen.push_back(scene.xsheet.Cell(0, 0).Transparency());
        }
    };
    cells.OnXSheetDoTrans(0); // cancelled
    EXPECT_EQ(seen, (std::vector<double>{30, 30, 30, 70})) << "what the rule refuses is not shown";
    EXPECT_EQ(scene.xsheet.Cell(0, 0), before);
    EXPECT_FALSE(CanUndo(model));
    EXPECT_EQ(TakeHints(), (Hints{4, 4, 4}));
    prompter.Answer(55.0);
    cells.OnXSheetDoTrans(0);
    EXPECT_EQ(scene.xsheet.Cell(0, 0).Transparency(), 55);
    EXPECT_EQ(model.history.Steps().size(), 1U);

    prompter.onDialog = [&] {
        std::any_cast<CBlurRequest>(prompter.lastRequest).show({7, 9, false});
        EXPECT_EQ(scene.xsheet.Cell(0, 0).BlurY(), 9);
    };
    cells.OnXSheetDoBlur(0);
    EXPECT_EQ(scene.xsheet.Cell(0, 0).BlurY(), 1);
    Undo();
    EXPECT_EQ(scene.xsheet.Cell(0, 0), before);
    EXPECT_FALSE(CanUndo(model));
}

TEST_F(CCellOperationsTest, CelDataIsTriedWhileItsDialogIsOpen) {
    const CXSheetCell before = Put(0, 0, "1");
    CCellDataForm form;
    prompter.onDialog = [&] {
        const auto request = std::any_cast<CCellDataRequest>(prompter.lastRequest);
        form = request.initial;
        form.transparency = 30;
        form.blurX = 4;
        request.show(form);
        CCellDataForm unreadable = form;
        unreadable.posX = std::nan("");
        unreadable.transparency = 80;
        request.show(unreadable);
        const CXSheetCell& shown = scene.xsheet.Cell(0, 0);
        EXPECT_EQ(std::tuple(shown.Transparency(), shown.BlurX(), shown.BlurY()), std::tuple(30.0, 4.0, 4.0));
        EXPECT_EQ(shown.PosX(), before.PosX());
    };
    cells.EditCellData(); // cancelled
    EXPECT_EQ(scene.xsheet.Cell(0, 0), before);
    EXPECT_FALSE(CanUndo(model));
    form.rotation = {0, 90};
    prompter.Answer(form);
    cells.EditCellData();
    EXPECT_EQ(scene.xsheet.Cell(0, 0).Transparency(), 30);
    EXPECT_EQ(model.history.Steps().size(), 1U);
    Undo();
    EXPECT_EQ(scene.xsheet.Cell(0, 0), before);
}

TEST_F(CCellOperationsTest, InbetweensTheCursorLevelFromUsedKeyToUsedKey) {
    SetLevels(2);
    model.cursorLevel = 1;
    model.selection = {0, 1, 0, 7};
    for (const int frame : {1, 2, 3, 5})
        Put(1, frame, "1");
    static_cast<void>(scene.xsheet.MutableCell(1, 1).SetPos(0, 0));
    static_cast<void>(scene.xsheet.MutableCell(1, 5).SetPos(100, 0));
    prompter.Answer(CInbetweenAnswer{true, {0, 0}});
    cells.Inbetween();
    const CInbetweenRequest request = std::any_cast<CInbetweenRequest>(prompter.lastRequest);
    EXPECT_EQ(std::pair(request.firstFrame, request.lastFrame), std::pair(2, 6));
    EXPECT_NEAR(scene.xsheet.Cell(1, 3).PosX(), 50, 1e-4);
    EXPECT_EQ(Row(1, 6), ".111.1");
    EXPECT_EQ(TakeHints(), Hints{4});

    prompter.Answer(CInbetweenAnswer{true, {0, 4}});
    cells.Inbetween();
    EXPECT_EQ(scene.xsheet.Cell(1, 5).PosX(), 0);
    EXPECT_EQ(TakeHints(), Hints{260});
}

TEST_F(CCellOperationsTest, ADrawnCurveAndItsExposureAreRemembered) {
    for (int frame = 0; frame < 9; ++frame)
        Put(0, frame, "1");
    static_cast<void>(scene.xsheet.MutableCell(0, 8).SetPos(884, 288));
    model.selection = {0, 0, 0, 8};
    prompter.Answer(CInbetweenAnswer{true, {0, 5, 2, {{0.5, 0}, {0.9, 0.31}}}});
    cells.Inbetween();
    EXPECT_EQ(scene.xsheet.Cell(0, 1).PosX(), 384);
    EXPECT_EQ(scene.xsheet.Cell(0, 4).PosX(), scene.xsheet.Cell(0, 5).PosX());
    EXPECT_LT(scene.xsheet.Cell(0, 4).PosX(), 384 + 125) << "slow out";
    cells.Inbetween();
    const CInbetweenChoice initial = std::any_cast<CInbetweenRequest>(prompter.lastRequest).initial;
    EXPECT_EQ(initial.type, 5);
    EXPECT_EQ(initial.hold, 2);
    EXPECT_EQ(initial.curve, (CPaceCurve{{0.5, 0}, {0.9, 0.31}}));
    Set(profile, setting::inbetweenCurveY2, 10000);
    Set(profile, setting::lastInbetweenHold, 0);
    cells.Inbetween();
    const CInbetweenChoice kept = std::any_cast<CInbetweenRequest>(prompter.lastRequest).initial;
    EXPECT_EQ(kept.curve.second.y, 1.5);
    EXPECT_EQ(kept.hold, 1);
}

TEST_F(CCellOperationsTest, InbetweenRemembersChoices) {
    model.selection.lastFrame = 1;
    EXPECT_FALSE(CanInbetween(model));
    cells.Inbetween();
    EXPECT_FALSE(CanUndo(model));
    model.selection.lastFrame = 2;
    EXPECT_TRUE(CanInbetween(model));
    Put(0, 0, "1");
    Put(0, 1, "1");
    cells.Inbetween();
    EXPECT_EQ(prompter.TakeMessages(),
              Texts{"Sorry, we need at least three used cels to inbetween from the first to the last!"});
    EXPECT_FALSE(CanUndo(model));

    Put(0, 2, "1");
    Set(profile, setting::lastInbetweenType, 77);
    prompter.Answer(CInbetweenAnswer{false, {4, 3}});
    cells.Inbetween();
    EXPECT_EQ(std::any_cast<CInbetweenRequest>(prompter.lastRequest).initial.type, 0);
    cells.Inbetween();
    EXPECT_EQ(std::any_cast<CInbetweenRequest>(prompter.lastRequest).initial.source, 4);
    EXPECT_EQ(std::any_cast<CInbetweenRequest>(prompter.lastRequest).initial.type, 3);
    EXPECT_EQ(hints, Hints{});
}

} // namespace velmor::testing
