#include "scene/CelOperations.h"
#include "XSheetScene.h"
#include "scene/CommandState.h"
#include "scene/DialogRequests.h"
#include "scene/Settings.h"

namespace velmor::testing {

namespace {

class CCelOperationsTest : public CXSheetScene {
protected:
    CCelOperations cels{Context()};
};

} // namespace

TEST_F(CCelOperationsTest, OutlineAndCentreInTheCameraView) {
    Put(0, 5, "1");
    model.cursorFrame = 5;
    EXPECT_EQ(cels.GetXSheetCelPoints(0),
              (std::array<CPoint, 4>{{{334, 238}, {434, 238}, {434, 338}, {334, 338}}}));
    model.camera.MutableAt(5).panX = 10;
    EXPECT_EQ(cels.GetXSheetCelCentre(0, 5), (CPoint{394, 288}));
    EXPECT_FALSE(cels.GetXSheetCelCentre(0, 4).has_value());
    EXPECT_FALSE(cels.GetXSheetCelCentre(1, 5).has_value());
    EXPECT_FALSE(cels.GetXSheetCelCentre(0, 100).has_value());
    model.cursorFrame = 4;
    EXPECT_FALSE(cels.GetXSheetCelPoints(0).has_value());
    EXPECT_EQ(prompter.TakeMessages(), Texts{});
    EXPECT_FALSE(cels.GetXSheetCelPoints(1).has_value());
    EXPECT_EQ(prompter.TakeMessages(), Texts{"Internal Error : levelno out of range in GetXSheetCelPoints"});
}

TEST_F(CCelOperationsTest, EditsCelDataOfTheCursorCell) {
    cels.OnXsheetEditceldata(); // empty
    EXPECT_FALSE(prompter.lastRequest.has_value());
    const CXSheetCel before = Put(0, 0, "1");
    cels.OnXsheetEditceldata(); // cancelled
    EXPECT_FALSE(model.undo.has_value());
    const CCelDataRequest request = std::any_cast<CCelDataRequest>(prompter.lastRequest);
    EXPECT_EQ(request.cel.name + request.cel.folder + request.cel.level, "1ManDefault");
    EXPECT_EQ(request.cel.frame, 1);

    CCelDataForm form = request.initial;
    form.blurX = 51;
    prompter.Answer(form);
    form.blurX = 2;
    form.posX = 12;
    prompter.Answer(form);
    cels.OnXsheetEditceldata();
    EXPECT_EQ(prompter.TakeMessages().size(), 1U);
    EXPECT_EQ(model.xsheet.Cel(0, 0).PosX(), 12);
    EXPECT_EQ(model.xsheet.Cel(0, 0).BlurY(), 2);
    EXPECT_EQ(TakeHints(), Hints{260});
    sheet.OnEditUndo();
    EXPECT_EQ(model.xsheet.Cel(0, 0), before);
}

TEST_F(CCelOperationsTest, EditsTransparencyAndBlurOfALevel) {
    SetLevels(2);
    model.cursorFrame = 3;
    cels.OnXSheetDoTrans(2);
    cels.OnXSheetDoBlur(-1);
    EXPECT_EQ(prompter.TakeMessages(), (Texts{"Internal Error : lvlno out of range in OnXSheetDoTrans",
                                              "Internal Error : lvlno out of range in OnXSheetDoBlur"}));
    cels.OnXSheetDoTrans(1);
    cels.OnXSheetDoBlur(1);
    EXPECT_FALSE(prompter.lastRequest.has_value()); // empty cells

    const CXSheetCel& cel = Put(1, 3, "1");
    for (const double transparency : {101.0, 40.0})
        prompter.Answer(transparency);
    cels.OnXSheetDoTrans(1);
    for (const double blurY : {0.0, 4.0})
        prompter.Answer(CBlurForm{3, blurY, false});
    cels.OnXSheetDoBlur(1);
    EXPECT_EQ(prompter.TakeMessages().size(), 2U); // of the values refused
    EXPECT_EQ(cel.Transparency(), 40);
    EXPECT_EQ(cel.BlurX() * cel.BlurY(), 12);
    EXPECT_EQ(TakeHints(), (Hints{260, 260}));
}

TEST_F(CCelOperationsTest, InbetweensTheCursorLevelFromUsedKeyToUsedKey) {
    SetLevels(2);
    model.cursorLevel = 1;
    model.selection = {0, 1, 0, 7};
    for (const int frame : {1, 2, 3, 5})
        Put(1, frame, "1");
    static_cast<void>(model.xsheet.MutableCel(1, 1).SetPos(0, 0));
    static_cast<void>(model.xsheet.MutableCel(1, 5).SetPos(100, 0));
    prompter.Answer(CInbetweenAnswer{true, {0, 0}});
    cels.OnXsheetInbetweenleveldata();
    const CInbetweenRequest request = std::any_cast<CInbetweenRequest>(prompter.lastRequest);
    EXPECT_EQ(std::pair(request.firstFrame, request.lastFrame), std::pair(2, 6));
    EXPECT_NEAR(model.xsheet.Cel(1, 3).PosX(), 50, 1e-4);
    EXPECT_EQ(Row(1, 6), ".111.1");
    EXPECT_EQ(TakeHints(), Hints{4});

    prompter.Answer(CInbetweenAnswer{true, {0, 4}});
    cels.OnXsheetInbetweenleveldata();
    EXPECT_EQ(model.xsheet.Cel(1, 5).PosX(), 0);
    EXPECT_EQ(TakeHints(), Hints{260});
}

TEST_F(CCelOperationsTest, InbetweenRemembersChoicesAndSnapshotOnCancelToo) {
    model.selection.lastFrame = 1;
    EXPECT_FALSE(CanInbetween(model));
    cels.OnXsheetInbetweenleveldata();
    EXPECT_FALSE(model.undo.has_value());
    model.selection.lastFrame = 2;
    EXPECT_TRUE(CanInbetween(model));
    Put(0, 0, "1");
    Put(0, 1, "1");
    cels.OnXsheetInbetweenleveldata();
    EXPECT_EQ(prompter.TakeMessages(),
              Texts{"Sorry, we need at least three used cels to inbetween from the first to the last!"});
    EXPECT_TRUE(model.undo.has_value());

    Put(0, 2, "1");
    Set(profile, setting::lastInbetweenType, 77);
    prompter.Answer(CInbetweenAnswer{false, {4, 3}});
    cels.OnXsheetInbetweenleveldata();
    EXPECT_EQ(std::any_cast<CInbetweenRequest>(prompter.lastRequest).initial.type, 0);
    cels.OnXsheetInbetweenleveldata();
    EXPECT_EQ(std::any_cast<CInbetweenRequest>(prompter.lastRequest).initial.source, 4);
    EXPECT_EQ(std::any_cast<CInbetweenRequest>(prompter.lastRequest).initial.type, 3);
    EXPECT_EQ(hints, Hints{});
}

} // namespace velmor::testing
