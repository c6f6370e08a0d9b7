// Which view a key acts on.

#include "MainFrameFixture.h"
#include "TestScene.h"
#include "views/camera/CamFrame.h"
#include "views/camera/CameraView.h"
#include "views/cel/CelFrame.h"
#include "views/cel/CelView.h"
#include "views/source/SourceView.h"
#include "views/xsheet/XSheetView.h"
#include "views/xsheet/XsheetFrame.h"

#include <QAbstractItemView>
#include <set>

namespace velmor::testing {
namespace {

struct CStroke {
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
};

class CKeysTest : public CMainFrameFixture {
protected:
    CKeysTest() {
        EXPECT_TRUE(doc->OpenScene("Test"));
        doc->SetFolderName("A");
        Frame();
    }
    ~CKeysTest() override { EndFrame(); }

    QWidget& Sheet() { return Frame().XsheetPane().View(); }
    CCameraView& Camera() { return Frame().CameraPane().View(); }
    CCelView& CelEditor() { return Frame().CelPane().View(); }
    QAbstractItemView& Assets() { return *Frame().SourceView().findChild<QAbstractItemView*>("assets"); }
    bool IsOpen(StackedPane pane) { return Frame().Panes().IsOpen(pane); }
    const CXSheet& Grid() { return doc->Model().xsheet; }
    /// The sheet after a key that `focus` gets.
    const CXSheet& After(QWidget& focus, const CStroke& stroke) {
        focus.setFocus();
        EXPECT_TRUE(HasFocus(focus)) << focus.objectName().toStdString();
        Key(stroke.key, stroke.modifiers);
        return Grid();
    }

    CTestScene scene{Database()};
};

} // namespace

TEST_F(CKeysTest, OnlyTheSheetTakesTheEditingKeys) {
    doc->OnEditCopy();
    const CXSheet before = Grid();
    Run(CommandId::ViewCameraAndXsheet);
    const CStroke strokes[] = {{Qt::Key_Delete, {}},
                               {Qt::Key_Delete, Qt::ShiftModifier},
                               {Qt::Key_X, Qt::ControlModifier},
                               {Qt::Key_V, Qt::ControlModifier},
                               {Qt::Key_Insert, Qt::ShiftModifier},
                               {Qt::Key_Insert, {}}};
    // Any question that a list asks of its own is answered with no.
    prompter.confirmations.assign(20, false);
    doc->SetCursorY(6);
    for (const CStroke& stroke : strokes) {
        EXPECT_EQ(After(Camera(), stroke), before) << stroke.key;
        EXPECT_EQ(After(Assets(), stroke), before) << stroke.key;
    }
    Run(CommandId::ViewCelEditor);
    for (const CStroke& stroke : strokes)
        EXPECT_EQ(After(CelEditor(), stroke), before) << stroke.key;
    EXPECT_FALSE(IsOpen(StackedPane::Xsheet));

    Run(CommandId::ViewXsheet);
    doc->SetCursorY(0);
    Key(Qt::Key_Delete);
    EXPECT_FALSE(Grid().Cel(0, 0).IsUsed());
    Key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Grid(), before);
    prompter.Answer(std::string("Back"));
    Key(Qt::Key_Insert);
    EXPECT_EQ(Grid().LevelCount(), 4);
}

TEST_F(CKeysTest, WhatIsChangedIsShownFirst) {
    doc->OnEditCut();
    Run(CommandId::ViewCelEditor);
    Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(Grid().Cel(0, 0).IsUsed());
    EXPECT_TRUE(IsOpen(StackedPane::Xsheet));
    EXPECT_TRUE(IsOpen(StackedPane::CelEditor)) << "what was open stays open";

    Run(CommandId::ViewCamera);
    Run(CommandId::EditCut); // with the mouse
    EXPECT_FALSE(Grid().Cel(0, 0).IsUsed());
    EXPECT_TRUE(IsOpen(StackedPane::Xsheet));
    EXPECT_TRUE(IsOpen(StackedPane::Camera));

    Run(CommandId::ViewXsheet);
    Run(CommandId::CameraZoomIn);
    EXPECT_TRUE(IsOpen(StackedPane::Camera));
    EXPECT_EQ(Camera().Zoom().Level(), 2);
}

TEST_F(CKeysTest, KeysOfAViewRestWhileItIsOutOfSight) {
    doc->EditCel("1");
    doc->SetSelEndY(9);
    Run(CommandId::ViewCelEditor);
    const CZoomLevel cameraZoom = Camera().Zoom();
    for (const Qt::Key key : {Qt::Key_F6, Qt::Key_F9, Qt::Key_F10, Qt::Key_Plus, Qt::Key_Minus})
        Key(key);
    EXPECT_EQ(doc->Model().inputMode, InputMode::Move);
    EXPECT_FALSE(prompter.lastRequest.has_value()) << "no dialog about a sheet that is not seen";
    EXPECT_EQ(Camera().Zoom(), cameraZoom);
    const CZoomLevel celZoom = CelEditor().Zoom();
    Key(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_EQ(CelEditor().Zoom(), celZoom.In());

    Run(CommandId::ViewCameraAndXsheet);
    Key(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_EQ(CelEditor().Zoom(), celZoom.In());
    Key(Qt::Key_Plus);
    EXPECT_EQ(Camera().Zoom(), cameraZoom.In()) << "seen beside the sheet that has the focus";
    Key(Qt::Key_F6);
    EXPECT_EQ(doc->Model().inputMode, InputMode::Rotate);
    Key(Qt::Key_F9);
    EXPECT_TRUE(prompter.lastRequest.has_value());
}

TEST_F(CKeysTest, ViewCommandsGiveTheKeyboardToWhatTheyShow) {
    const std::pair<Qt::Key, QWidget*> views[] = {
        {Qt::Key_F1, &Sheet()}, {Qt::Key_F2, &Camera()}, {Qt::Key_F3, &Sheet()}, {Qt::Key_F4, &CelEditor()}};
    const CommandId ids[] = {CommandId::ViewCameraAndXsheet, CommandId::ViewCamera, CommandId::ViewXsheet,
                             CommandId::ViewCelEditor};
    for (std::size_t i = 0; i < std::size(views); ++i) {
        Key(views[i].first);
        EXPECT_TRUE(HasFocus(*views[i].second)) << i;
        std::set<CommandId> checked;
        for (const CommandId id : ids)
            if (Frame().Action(id)->isChecked())
                checked.insert(id);
        EXPECT_EQ(checked, std::set{ids[i]});
    }
    // The strip of a collapsed pane opens it alone; dragging the panes leaves none of the four.
    Frame().ShowPane(StackedPane::Xsheet);
    Frame().UpdateCommands();
    for (const CommandId id : ids)
        EXPECT_FALSE(Frame().Action(id)->isChecked());
}

} // namespace velmor::testing
