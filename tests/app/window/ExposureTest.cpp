// Exposing by typing, and the commands of the exposure menu, in the assembled window.

#include "MainFrameFixture.h"
#include "TestScene.h"
#include "qt/Patience.h"
#include "scene/XSheetCursor.h"
#include "scene/exposing/Exposing.h"
#include "scene/exposing/SheetTiming.h"
#include "scene/paper/DrawingSteps.h"
#include "scene/preview/ScenePreview.h"
#include "views/camera/CamFrame.h"
#include "views/camera/CameraView.h"
#include "views/cel/CelFrame.h"
#include "views/cel/CelView.h"
#include "views/xsheet/XSheetView.h"
#include "views/xsheet/XsheetFrame.h"

#include <QLabel>
#include <QMenu>
#include <QMenuBar>

namespace velmor::testing {
namespace {

class ExposureTest : public CMainFrameFixture {
protected:
    ExposureTest() {
        EXPECT_TRUE(doc->Scenes().OpenScene("Test"));
        doc->Drawings().SetHold(1);
        Frame();
    }
    ~ExposureTest() override { EndFrame(); }

    std::string Row() const {
        std::string row;
        const CXSheet& xsheet = doc->Model().Scene().xsheet;
        for (int frame = 0; frame < xsheet.FrameCount(); ++frame)
            row += xsheet.Cell(0, frame).IsUsed() ? xsheet.Cell(0, frame).CelName() : ".";
        return row;
    }
    QString Said() {
        Frame().UpdateCommands();
        return Frame().findChild<QLabel*>("exposing")->text();
    }

    CTestScene scene{Database()};
};

TEST_F(ExposureTest, EveryCommandIsOneStepThatUndoTakesBack) {
    struct CCase {
        CommandId id;
        const char* after; ///< of frames 3 to 6, "1122", selected in "1111122222"
    };
    const CCase cases[] = {
        {CommandId::ExposureOnes, "1111222222"},     {CommandId::ExposureThrees, "1111112222"},
        {CommandId::ExposureShift, "111..11222"},    {CommandId::ExposureRoll, "1112211222"},
        {CommandId::ExposureStretch, "1111222222"},  {CommandId::ExposureInsertTime, "111111122222"},
        {CommandId::ExposureDeleteTime, "11122222"},
    };
    for (const CCase& test : cases) {
        doc->Cursor().GoTo({0, 3});
        doc->Cursor().SetSelEndY(6);
        prompter.Answer(2);
        const std::string before = Row();
        Run(test.id);
        EXPECT_EQ(Row(), test.after) << Frame().Action(test.id)->text().toStdString();
        Run(CommandId::EditUndo);
        EXPECT_EQ(Row(), before);
        EXPECT_FALSE(CanUndo(doc->Model()));
        prompter.ForgetAnswers();
    }
}

TEST_F(ExposureTest, TheMenuIsThereInTheSheetAsWell) {
    std::vector<QMenu*> found;
    for (QMenu* menu : Frame().findChildren<QMenu*>())
        if (menu->title() == "E&xposure")
            found.push_back(menu);
    EXPECT_EQ(found.size(), 2U);
    doc->Cursor().GoTo({0, 3});
    Frame().UpdateCommands();
    EXPECT_FALSE(Frame().Action(CommandId::ExposureSwing)->isEnabled()) << "one frame has no way back";
    EXPECT_TRUE(Frame().Action(CommandId::ExposureTwos)->isEnabled());
}

TEST_F(ExposureTest, TheStatusBarSaysHowDrawingsAreExposed) {
    EXPECT_EQ(Said(), "On ones, pushing");
    Run(CommandId::CelNewOnThrees);
    Run(CommandId::ExposurePush);
    EXPECT_EQ(Said(), "On threes, eating");
    EXPECT_TRUE(Frame().Action(CommandId::CelNewOnThrees)->isChecked());
    EXPECT_FALSE(Frame().Action(CommandId::CelNewOnOnes)->isChecked());
    EXPECT_FALSE(Frame().Action(CommandId::ExposurePush)->isChecked());
    auto& menu = *Frame().findChild<QMenu*>("exposing menu");
    QTest::mouseClick(Frame().findChild<QLabel*>("exposing"), Qt::LeftButton);
    ASSERT_TRUE(menu.isVisible());
    menu.hide();
    EXPECT_EQ(menu.actions().front(), Frame().Action(CommandId::CelNewOnOnes));
}

TEST_F(ExposureTest, KeysAreTypedIntoTheSheetAlone) {
    CXSheetView& sheet = Frame().XsheetPane().View();
    sheet.setFocus();
    Key(Qt::Key_2);
    EXPECT_EQ(Row(), "1111122222");
    Key(Qt::Key_Return);
    EXPECT_EQ(Row(), "2111122222");
    EXPECT_EQ(doc->Model().celImg.GetLoadState(), LoadState::Nothing) << "no drawing was opened";
    Key(Qt::Key_2);
    Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Row(), "1111122222");
    EXPECT_EQ(doc->Timing().Outcome(), nullptr) << "what was typed for another scene is given up";
    Frame().CameraPane().View().setFocus();
    Key(Qt::Key_2);
    EXPECT_EQ(doc->Timing().Outcome(), nullptr);
    sheet.setFocus();
    doc->Cursor().GoTo({0, 5});
    Key(Qt::Key_Return);
    EXPECT_EQ(doc->Model().celImg.FilePath().stem(), "2") << "with nothing typed, Enter opens";
}

TEST_F(ExposureTest, EnterOnAnEmptyCellMakesTheNextDrawingOfTheLevel) {
    Frame().XsheetPane().View().setFocus();
    doc->Scenes().SetFolderName("A");
    doc->Drawings().SetHold(2);
    doc->Cursor().GoTo({1, 4});
    Key(Qt::Key_Return);
    const CXSheet& xsheet = doc->Model().Scene().xsheet;
    EXPECT_EQ(xsheet.Cell(1, 4).CelName(), "3");
    EXPECT_TRUE(xsheet.Cell(1, 5).Shows("A", "3"));
    EXPECT_FALSE(xsheet.Cell(1, 6).IsUsed());
    EXPECT_EQ(doc->Model().celImg.FilePath(), scene.folder / "A" / "3.bit");
    Run(CommandId::EditUndo);
    EXPECT_FALSE(doc->Model().Scene().xsheet.Cell(1, 4).IsUsed());
}

TEST_F(ExposureTest, TheMenuShowsWhatACommandWouldDo) {
    doc->Cursor().GoTo({0, 0});
    doc->Cursor().SetSelEndY(9);
    Frame().UpdateCommands();
    QMenu* menu = nullptr;
    for (QMenu* found : Frame().findChildren<QMenu*>())
        if (found->title() == "E&xposure")
            menu = found;
    ASSERT_NE(menu, nullptr);
    menu->popup({10, 10});
    menu->setActiveAction(Frame().Action(CommandId::ExposureTwos));
    ASSERT_NE(doc->Timing().Outcome(), nullptr);
    EXPECT_EQ(doc->Timing().Outcome()->xsheet.Cell(0, 2).CelName(), "2");
    menu->setActiveAction(Frame().Action(CommandId::ExposureShift));
    EXPECT_EQ(doc->Timing().Outcome(), nullptr) << "it asks for a number first";
    menu->setActiveAction(Frame().Action(CommandId::ExposureOnes));
    EXPECT_NE(doc->Timing().Outcome(), nullptr);
    menu->hide();
    EXPECT_EQ(doc->Timing().Outcome(), nullptr);
    EXPECT_EQ(Row(), "1111122222");
}

class FewActionsTest : public CMainFrameFixture {
protected:
    ~FewActionsTest() override { EndFrame(); }

    void Stroke() {
        QWidget& canvas = *Frame().CelPane().View().viewport();
        QTest::mousePress(&canvas, Qt::LeftButton, {}, canvas.rect().center());
        QTest::mouseMove(&canvas, canvas.rect().center() + QPoint(8, 8));
        QTest::mouseRelease(&canvas, Qt::LeftButton, {}, canvas.rect().center() + QPoint(8, 8));
    }
};

// Ten actions with one dialog: to choose New Scene, to name it, to give it a length, to confirm, and the six below.
TEST_F(FewActionsTest, ALoopOfTwoDrawingsIsMadeFromAnEmptyDatabase) {
    ASSERT_FALSE(doc->Model().sceneOpen);
    Frame();
    CSceneSettings settings;
    settings.name = "Loop";
    settings.length = 4;
    settings.geometry.width = 64;
    settings.geometry.height = 48;
    settings.preset = customPreset;
    prompter.Answer(settings);
    Run(CommandId::FileNewScene);
    Key(Qt::Key_Return);
    Run(CommandId::CelPen);
    Stroke();
    Key(Qt::Key_N);
    Stroke();
    Run(CommandId::PreviewPlay);
    EXPECT_TRUE(WaitFor([this] { return doc->Preview().Frame() == 2; })) << "it plays";
    doc->Preview().Stop();
    const CXSheet& xsheet = doc->Model().Scene().xsheet;
    for (int frame = 0; frame < 4; ++frame)
        EXPECT_TRUE(xsheet.Cell(0, frame).Shows("Default", frame < 2 ? "1" : "2")) << frame;
    for (const char* name : {"1", "2"}) {
        CCelImg drawing;
        EXPECT_TRUE(drawing.Load(SceneFolder("Loop") / "Default" / (std::string(name) + ".bit")));
        bool hasLine = false;
        for (int y = 0; y < drawing.Height(); ++y)
            for (int x = 0; x < drawing.Width(); ++x)
                hasLine = hasLine || drawing.IsLine(x, y);
        EXPECT_TRUE(hasLine) << name;
    }
    EXPECT_TRUE(prompter.TakeMessages().empty());
}

} // namespace
} // namespace velmor::testing
