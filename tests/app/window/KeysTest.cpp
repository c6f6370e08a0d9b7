// Which view a key acts on.

#include "MainFrameFixture.h"
#include "TestScene.h"
#include "scene/AssetOperations.h"
#include "scene/CameraOperations.h"
#include "scene/PaletteOperations.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneModel.h"
#include "scene/XSheetCursor.h"
#include "scene/XSheetOperations.h"
#include "views/camera/CamFrame.h"
#include "views/camera/CameraView.h"
#include "views/cel/CelFrame.h"
#include "views/cel/CelView.h"
#include "views/source/SourceView.h"
#include "views/xsheet/XSheetView.h"
#include "views/xsheet/XsheetFrame.h"

#include <QAbstractItemView>
#include <QMenuBar>
#include <algorithm>
#include <map>
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
        EXPECT_TRUE(doc->Scenes().OpenScene("Test"));
        doc->Scenes().SetFolderName("A");
        Frame();
    }
    ~CKeysTest() override { EndFrame(); }

    QWidget& Sheet() { return Frame().XsheetPane().View(); }
    CCameraView& Camera() { return Frame().CameraPane().View(); }
    CCelView& CelEditor() { return Frame().CelPane().View(); }
    QAbstractItemView& Assets() { return *Frame().SourceView().findChild<QAbstractItemView*>("assets"); }
    bool IsOpen(StackedPane pane) { return Frame().Panes().IsOpen(pane); }
    const CXSheet& Grid() { return doc->Model().Scene().xsheet; }
    /// The sheet after a key that `focus` gets.
    const CXSheet& After(QWidget& focus, const CStroke& stroke) {
        focus.setFocus();
        EXPECT_TRUE(HasFocus(focus)) << focus.objectName().toStdString();
        Key(stroke.key, stroke.modifiers);
        return Grid();
    }

    CTestScene scene{Database()};
};

/// What keys could change, by the part of the window that it belongs to.
struct CWindowState {
    CXSheet grid;
    CXSheetSelection selection;
    int cursorFrame = 0;
    CZoomLevel cameraZoom;
    InputMode cameraMode{};
    CZoomLevel celZoom;
    CelTool tool{};
    CelPick pick{};
    Path image;
    std::vector<std::string> colors = {};
    std::vector<Path> files = {};
    std::string folder = {};
    std::array<bool, stackedPanes> open{};

    std::set<std::string> Differences(const CWindowState& other) const {
        std::set<std::string> parts;
        const auto compare = [&](bool same, const char* part) {
            if (!same)
                parts.insert(part);
        };
        compare(grid == other.grid && selection == other.selection, "sheet");
        // The camera view shows the cursor's frame: its keys go to other frames as well.
        compare(cursorFrame == other.cursorFrame, "frame");
        compare(cameraZoom == other.cameraZoom && cameraMode == other.cameraMode, "camera");
        compare(celZoom == other.celZoom && tool == other.tool && pick == other.pick, "cel editor");
        compare(image == other.image, "image");
        compare(colors == other.colors, "colors");
        compare(files == other.files && folder == other.folder, "assets");
        compare(open == other.open, "arrangement");
        return parts;
    }
};

} // namespace

TEST_F(CKeysTest, OnlyWhatHasTheFocusReacts) {
    for (const StackedPane pane : {StackedPane::Xsheet, StackedPane::CelEditor})
        Frame().ShowPane(pane);
    QCoreApplication::processEvents();
    const auto state = [this] {
        const CSceneModel& model = doc->Model();
        CWindowState now{Grid(),
                         model.selection,
                         model.cursorFrame,
                         Camera().Zoom(),
                         model.inputMode,
                         CelEditor().Zoom(),
                         CelEditor().Tool(),
                         CelEditor().PendingPick(),
                         model.celImg.FilePath()};
        for (int color = 0; color < doc->Model().palette.Count(); ++color)
            now.colors.push_back(doc->Palette().GetColorName(color));
        for (const auto& entry : std::filesystem::recursive_directory_iterator(SceneFolder("Test")))
            now.files.push_back(entry.path());
        std::ranges::sort(now.files);
        now.folder = model.folderName;
        for (std::size_t pane = 0; pane < stackedPanes; ++pane)
            now.open[pane] = IsOpen(static_cast<StackedPane>(pane));
        return now;
    };
    const std::vector<std::pair<const QWidget*, std::set<std::string>>> own = {
        {&Frame().SourceView(), {"assets"}},
        {&Frame().CameraPane(), {"camera", "frame"}},
        {&Frame().XsheetPane(), {"sheet", "frame"}},
        {Frame().findChild<QWidget*>("colorList"), {"colors"}},
        {&Frame().CelPane(), {"cel editor"}}};
    std::vector<QWidget*> widgets;
    for (QWidget* widget : Frame().findChildren<QWidget*>())
        if (widget->isVisible() && widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus) != 0 &&
            widget->focusProxy() == nullptr)
            widgets.push_back(widget);
    std::map<std::string, int> reactions;
    for (QWidget* widget : widgets)
        for (const Qt::Key key : {Qt::Key_Delete, Qt::Key_F2, Qt::Key_Return, Qt::Key_Escape, Qt::Key_0, Qt::Key_1,
                                  Qt::Key_2, Qt::Key_A, Qt::Key_B, Qt::Key_I, Qt::Key_L, Qt::Key_P}) {
            prompter.confirmations = {false};
            widget->setFocus();
            if (!HasFocus(*widget))
                continue; // taken away by what a key before has changed
            const auto part = std::ranges::find_if(
                own, [&](const auto& entry) { return entry.first == widget || entry.first->isAncestorOf(widget); });
            ASSERT_NE(part, own.end()) << widget->objectName().toStdString();
            const CWindowState before = state();
            Key(key);
            std::set<std::string> others = before.Differences(state());
            for (const std::string& mine : part->second)
                reactions[mine] += static_cast<int>(others.erase(mine));
            if (key == Qt::Key_F2 && widget->objectName() != "colorList")
                others.erase("arrangement"); // the view command, where it means nothing else
            if (key == Qt::Key_Return)       // opens drawings, in the sheet and in the list
                for (const char* opened : {"image", "arrangement", "assets", "cel editor"})
                    others.erase(opened);
            EXPECT_TRUE(others.empty())
                << *others.begin() << " by key " << key << " in " << widget->metaObject()->className() << " "
                << widget->objectName().toStdString();
            if (IsOpen(StackedPane::Xsheet) && IsOpen(StackedPane::Camera) && IsOpen(StackedPane::CelEditor))
                continue;
            for (const StackedPane pane : {StackedPane::Camera, StackedPane::Xsheet, StackedPane::CelEditor})
                Frame().ShowPane(pane);
            QCoreApplication::processEvents();
        }
    for (const char* part : {"camera", "sheet", "cel editor"})
        EXPECT_GT(reactions[part], 0) << part << " has keys of its own";
}

TEST_F(CKeysTest, OnlyTheSheetTakesTheEditingKeys) {
    doc->XSheet().Copy();
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
    doc->Cursor().SetCursorY(6);
    for (const CStroke& stroke : strokes) {
        EXPECT_EQ(After(Camera(), stroke), before) << stroke.key;
        EXPECT_EQ(After(Assets(), stroke), before) << stroke.key;
    }
    Run(CommandId::ViewCelEditor);
    for (const CStroke& stroke : strokes)
        EXPECT_EQ(After(CelEditor(), stroke), before) << stroke.key;
    EXPECT_FALSE(IsOpen(StackedPane::Xsheet));

    Run(CommandId::ViewXsheet);
    doc->Cursor().SetCursorY(0);
    Key(Qt::Key_Delete);
    EXPECT_FALSE(Grid().Cell(0, 0).IsUsed());
    Key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Grid(), before);
    prompter.Answer(std::string("Back"));
    Key(Qt::Key_Insert);
    EXPECT_EQ(Grid().LevelCount(), 4);
}

TEST_F(CKeysTest, WhatIsChangedIsShownFirst) {
    doc->XSheet().Cut();
    Run(CommandId::ViewCelEditor);
    Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(Grid().Cell(0, 0).IsUsed());
    EXPECT_TRUE(IsOpen(StackedPane::Xsheet));
    EXPECT_TRUE(IsOpen(StackedPane::CelEditor)) << "what was open stays open";

    Run(CommandId::ViewCamera);
    doc->Camera().StartCamInput();
    doc->Camera().EndCamInput(5, 0);
    Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(IsOpen(StackedPane::Xsheet)) << "the picture shows what a drag in it changed";
    EXPECT_EQ(Grid().Cell(0, 0).PosX(), 20);

    Run(CommandId::EditCut); // with the mouse
    EXPECT_FALSE(Grid().Cell(0, 0).IsUsed());
    EXPECT_TRUE(IsOpen(StackedPane::Xsheet));
    EXPECT_TRUE(IsOpen(StackedPane::Camera));

    Run(CommandId::ViewXsheet);
    Run(CommandId::CameraZoomIn);
    EXPECT_TRUE(IsOpen(StackedPane::Camera));
    EXPECT_EQ(Camera().Zoom().Level(), 2);
}

TEST_F(CKeysTest, LettersInAnOpenMenuAreNoKeysOfAView) {
    Run(CommandId::ViewCelEditor);
    const CelTool tool = CelEditor().Tool();
    ASSERT_NE(tool, CelTool::Curve);
    Frame().menuBar()->setFocus(Qt::MenuBarFocusReason); // as it has it while its menus are open
    ASSERT_TRUE(HasFocus(*Frame().menuBar()));
    Key(Qt::Key_C);
    EXPECT_EQ(CelEditor().Tool(), tool);
    ASSERT_NE(QApplication::activePopupWidget(), nullptr) << "it has opened Camera";
    QApplication::activePopupWidget()->close();
    CelEditor().setFocus();
    Key(Qt::Key_C);
    EXPECT_EQ(CelEditor().Tool(), CelTool::Curve);
}

// The menu that is open gets the keys, whatever has the focus.
TEST_F(CKeysTest, LettersInAnOpenMenuChooseInIt) {
    Run(CommandId::ViewCameraAndXsheet);
    Frame().XsheetPane().View().setFocus();
    QAction* const xsheet = Frame().menuBar()->actions().at(4);
    QMenu& menu = *xsheet->menu();
    menu.popup(Frame().mapToGlobal(QPoint(100, 40)));
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&menu));
    Key(Qt::Key_K);
    EXPECT_TRUE(
        doc->Model().Scene().xsheet.Cell(doc->Model().cursorLevel, doc->Model().cursorFrame).Note().IsEmpty());
    ASSERT_NE(menu.activeAction(), nullptr);
    EXPECT_EQ(menu.activeAction()->text(), "Mar&ks and Notes");
    menu.close();
    Key(Qt::Key_K);
    EXPECT_EQ(doc->Model().Scene().xsheet.Cell(doc->Model().cursorLevel, doc->Model().cursorFrame).Note().mark,
              SheetMark::Key);
}

TEST_F(CKeysTest, KeysOfAViewRestWhileItIsOutOfSight) {
    doc->Assets().EditCel("1");
    doc->Cursor().SetSelEndY(9);
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
    Key(Qt::Key_Plus, Qt::KeypadModifier);
    EXPECT_EQ(Camera().Zoom(), cameraZoom.In()) << "seen beside the sheet that has the focus";
    Key(Qt::Key_Plus);
    Key(Qt::Key_Minus);
    EXPECT_EQ(Camera().Zoom(), cameraZoom.In()) << "typed into the sheet, but for those of the keypad";
    Key(Qt::Key_Escape);
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
