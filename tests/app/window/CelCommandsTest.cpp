// The cel editor in the assembled window: its commands and their keys.

#include "MainFrameFixture.h"
#include "scene/AssetOperations.h"
#include "scene/CelSelection.h"
#include "scene/DialogRequests.h"
#include "scene/PaletteOperations.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneModel.h"
#include "views/camera/CamFrame.h"
#include "views/camera/CameraView.h"
#include "views/cel/CelFrame.h"
#include "views/cel/CelView.h"
#include "views/cel/ColorList.h"

#include <QAbstractItemView>
#include <QScrollBar>

namespace velmor::testing {
namespace {

class CCelCommandsTest : public CMainFrameFixture {
protected:
    CCelCommandsTest() {
        NewScene("Test", 20, 320, 240);
        const CScenePaths paths = doc->Model().Paths();
        static_cast<void>(CreateFolder(paths.CelFolder("walk")));
        static_cast<void>(CreateFolder(paths.PicturesFolder()));
        doc->Scenes().SetFolderName("walk");
        prompter.Answer(CNewCelValues{"1", {200, 160}});
        doc->Assets().NewCel();
        CCelImg picture;
        EXPECT_TRUE(picture.CreatePicture(200, 160, paths.PictureFile("back")));
        EXPECT_TRUE(picture.Save());
        Frame();
    }
    ~CCelCommandsTest() override { EndFrame(); }

    void Edit(SourceMode mode, const char* name) {
        doc->Scenes().SetSourceMode(mode);
        doc->Assets().EditCel(name);
        Frame().UpdateCommands();
    }
    void EditCelOnCanvas() {
        Edit(SourceMode::Cels, "1");
        Run(CommandId::ViewCelEditor);
    }
    CCelView& View() { return Frame().CelPane().View(); }
    QListWidget& Colors() { return *Frame().findChild<QListWidget*>("colorList"); }
    bool IsEnabled(CommandId id) { return Frame().Action(id)->isEnabled(); }
    bool IsChecked(CommandId id) { return Frame().Action(id)->isChecked(); }
};

} // namespace

TEST_F(CCelCommandsTest, ToolsAndPicksByCommandAndByKeyOfTheCanvas) {
    using enum CommandId;
    EditCelOnCanvas();
    Run(CelPen);
    EXPECT_EQ(View().Tool(), CelTool::Pen);
    EXPECT_TRUE(IsChecked(CelPen));
    const std::pair<Qt::Key, CelTool> keys[] = {{Qt::Key_L, CelTool::LineBrush},
                                                {Qt::Key_E, CelTool::Eraser},
                                                {Qt::Key_B, CelTool::Bucket},
                                                {Qt::Key_P, CelTool::Pen}};
    for (const auto& [key, tool] : keys) {
        Key(key);
        EXPECT_EQ(View().Tool(), tool);
        EXPECT_EQ(IsChecked(CelPen), tool == CelTool::Pen);
    }
    Key(Qt::Key_I);
    EXPECT_EQ(View().PendingPick(), CelPick::Foreground);
    EXPECT_TRUE(IsChecked(CelPickColor));
    Key(Qt::Key_I);
    EXPECT_EQ(View().PendingPick(), CelPick::Nothing);
    EXPECT_FALSE(IsChecked(CelPickColor));
    Colors().setFocus();
    Key(Qt::Key_B);
    EXPECT_EQ(View().Tool(), CelTool::Pen) << "a letter typed elsewhere";
}

TEST_F(CCelCommandsTest, BucketAndPenAreNotOfferedForAPicture) {
    using enum CommandId;
    EditCelOnCanvas();
    Run(CelEraser);
    EXPECT_TRUE(IsEnabled(CelBucket) && IsEnabled(CelPen));
    EXPECT_FALSE(IsEnabled(CelColorKey)) << "of a cel";
    Edit(SourceMode::Pictures, "back");
    EXPECT_FALSE(IsEnabled(CelBucket) || IsEnabled(CelPen));
    EXPECT_TRUE(IsEnabled(CelEraser) && IsEnabled(CelLineBrush) && IsEnabled(CelColorKey));
    for (const Qt::Key key : {Qt::Key_B, Qt::Key_P}) {
        Key(key);
        EXPECT_EQ(View().Tool(), CelTool::Eraser);
    }
    EXPECT_TRUE(prompter.TakeMessages().empty());
}

TEST_F(CCelCommandsTest, OpeningShowsTheEditorAndGivesItTheKeyboard) {
    const auto isOpen = [this] { return Frame().Panes().IsOpen(StackedPane::CelEditor); };
    Run(CommandId::ViewXsheet);
    auto& assets = *Frame().findChild<QAbstractItemView*>("assets");
    assets.setFocus();
    Edit(SourceMode::Cels, "1");
    QCoreApplication::processEvents();
    EXPECT_TRUE(isOpen());
    EXPECT_TRUE(Frame().Panes().IsOpen(StackedPane::Xsheet)) << "what was open stays";
    EXPECT_TRUE(HasFocus(View()));
    Key(Qt::Key_P);
    EXPECT_EQ(View().Tool(), CelTool::Pen);

    Run(CommandId::ViewXsheet);
    Run(CommandId::FileSaveAll);
    doc->Views().UpdateAllViews(UpdateHint::EditedImage);
    EXPECT_FALSE(isOpen()) << "nothing was opened";
    doc->Assets().EditCel("missing");
    EXPECT_FALSE(isOpen()) << "nothing could be opened";
}

TEST_F(CCelCommandsTest, ZeroFitsAndOneShowsTheTrueSize) {
    EditCelOnCanvas();
    const CZoomLevel camera = Frame().CameraPane().View().Zoom();
    Key(Qt::Key_0);
    QCoreApplication::processEvents(); // until the pane has its size
    EXPECT_GT(View().Zoom().Level(), 1);
    EXPECT_EQ(View().horizontalScrollBar()->maximum() + View().verticalScrollBar()->maximum(), 0);
    View().ZoomIn();
    EXPECT_GT(View().horizontalScrollBar()->maximum() + View().verticalScrollBar()->maximum(), 0);
    Key(Qt::Key_1);
    EXPECT_EQ(View().Zoom(), CZoomLevel(1));
    Colors().setFocus();
    Key(Qt::Key_0);
    EXPECT_EQ(View().Zoom(), CZoomLevel(1)) << "typed elsewhere";
    EXPECT_EQ(Frame().CameraPane().View().Zoom(), camera);
}

TEST_F(CCelCommandsTest, TheColorListHasItsKeysToItself) {
    EditCelOnCanvas();
    Colors().setCurrentRow(1);
    Colors().setFocus();
    Key(Qt::Key_Return);
    EXPECT_EQ(doc->Model().paint.foreground, (CColor{255, 255, 255, 255}));
    prompter.Answer(CColorValues{"Chalk", {250, 250, 250, 255}});
    Key(Qt::Key_F2);
    EXPECT_EQ(doc->Palette().GetColorName(1), "Chalk");
    EXPECT_TRUE(Frame().Panes().IsOpen(StackedPane::CelEditor)) << "not another view";
    EXPECT_TRUE(HasFocus(Colors()));
    Key(Qt::Key_Delete);
    EXPECT_EQ(doc->Model().palette.Count(), 2);
}

TEST_F(CCelCommandsTest, CutCopyAndPasteMeanPixelsInTheEditorAndCellsInTheSheet) {
    using enum CommandId;
    EditCelOnCanvas();
    View().setFocus();
    doc->Painting().Change("Drawing", [](CCelImg& image) {
        image.SetLine(20, 20, true);
        image.SetColorAt(20, 20, {0, 0, 0, 255});
        return CPaintResult{CStatus(), {20, 20, 21, 21}};
    });
    Key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_TRUE(doc->Selection().HasSelection());
    Run(EditCut);
    EXPECT_FALSE(doc->Model().celImg.IsLine(20, 20));
    EXPECT_EQ(doc->History().UndoText(), "Undo Cut on walk 1");
    Run(EditPaste);
    EXPECT_TRUE(doc->Model().celImg.IsLine(20, 20));
    Key(Qt::Key_Right);
    EXPECT_TRUE(doc->Model().celImg.IsLine(21, 20));
    EXPECT_EQ(doc->History().UndoText(), "Undo Paste on walk 1");
    Run(EditUndo);
    EXPECT_FALSE(doc->Model().celImg.IsLine(21, 20));
    EXPECT_EQ(doc->History().UndoText(), "Undo Cut on walk 1");
    Key(Qt::Key_D, Qt::ControlModifier);
    EXPECT_FALSE(doc->Selection().HasSelection());
    EXPECT_FALSE(IsEnabled(CelCut));

    Key(Qt::Key_A, Qt::ControlModifier);
    Run(ViewXsheet);
    Run(EditCopy); // the sheet has the focus
    EXPECT_TRUE(CanPaste(doc->Model()));
    const std::size_t steps = doc->Model().history.Steps().size();
    Run(EditCut);
    EXPECT_EQ(doc->Model().history.Steps().size(), steps) << "an empty cell";
}

} // namespace velmor::testing
