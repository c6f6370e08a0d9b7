// How the sheet is looked at, in the assembled window.

#include "MainFrameFixture.h"
#include "TestScene.h"
#include "scene/XSheetCursor.h"
#include "scene/sheet/SheetDisplay.h"
#include "views/xsheet/OtherSheetPane.h"
#include "views/xsheet/OtherSheetView.h"
#include "views/xsheet/XSheetView.h"
#include "views/xsheet/XsheetFrame.h"

#include <QComboBox>

namespace velmor::testing {
namespace {

class CSheetGlanceWindowTest : public CMainFrameFixture {
protected:
    CSheetGlanceWindowTest() {
        EXPECT_TRUE(doc->Scenes().OpenScene("Test"));
        Frame();
    }
    ~CSheetGlanceWindowTest() override { EndFrame(); }

    bool IsEnabled(CommandId id) {
        Frame().UpdateCommands();
        return Frame().Action(id)->isEnabled();
    }
    CXSheetView& Sheet() { return Frame().XsheetPane().View(); }

    CTestScene scene{Database()};
    CTestScene away{Database(), "Away"};
};

TEST_F(CSheetGlanceWindowTest, CommandsChangeWhatIsSeenAndNothingElse) {
    const CScene before = doc->Model().Scene();
    EXPECT_FALSE(IsEnabled(CommandId::SheetZoomOut));
    for (int zoom = 0; zoom < CSheetDisplay::mostZoom; ++zoom)
        Run(CommandId::SheetZoomIn);
    EXPECT_GT(Sheet().Geometry().rowHeight, 100);
    EXPECT_FALSE(IsEnabled(CommandId::SheetZoomIn));
    doc->Cursor().GoTo({1, 0});
    EXPECT_FALSE(IsEnabled(CommandId::LevelUnfoldAll));
    Run(CommandId::LevelFold);
    EXPECT_TRUE(Sheet().Geometry().IsFolded(1));
    Frame().UpdateCommands();
    EXPECT_TRUE(Frame().Action(CommandId::LevelFold)->isChecked());
    Run(CommandId::LevelUnfoldAll);
    EXPECT_FALSE(Sheet().Geometry().IsFolded(1));
    Run(CommandId::SheetFolderColors);
    Run(CommandId::SheetHoldLines);
    EXPECT_TRUE(doc->SheetDisplay().ColorsFolders());
    EXPECT_TRUE(doc->SheetDisplay().DrawsHolds());
    EXPECT_EQ(doc->Model().Scene(), before);
    EXPECT_FALSE(IsEnabled(CommandId::EditUndo));
}

TEST_F(CSheetGlanceWindowTest, LevelsMoveByOnePlaceAndBack) {
    const CScene before = doc->Model().Scene();
    doc->Cursor().GoTo({0, 3});
    EXPECT_FALSE(IsEnabled(CommandId::LevelMoveLeft));
    Run(CommandId::LevelMoveRight);
    EXPECT_TRUE(doc->Model().Scene().xsheet.Cell(1, 3).Shows("A", "1"));
    EXPECT_EQ(doc->Model().cursorLevel, 1) << "with its level";
    Run(CommandId::LevelMoveRight);
    EXPECT_FALSE(IsEnabled(CommandId::LevelMoveRight));
    Run(CommandId::EditUndo);
    Run(CommandId::EditUndo);
    EXPECT_EQ(doc->Model().Scene(), before);
}

TEST_F(CSheetGlanceWindowTest, KeysCopyFromTheSheetThatHasTheFocus) {
    Run(CommandId::SheetOtherScene);
    EXPECT_TRUE(Frame().XsheetPane().ShowsOtherSheet());
    COtherSheetPane& other = Frame().XsheetPane().OtherSheet();
    auto& scenes = *other.findChild<QComboBox*>("scenes");
    scenes.setCurrentIndex(1);
    scenes.activated(1);
    EXPECT_TRUE(HasFocus(other.View()));
    Key(Qt::Key_End);
    Key(Qt::Key_C, Qt::ControlModifier);
    ASSERT_EQ(doc->Model().clipboard.cells.size(), 1U);
    EXPECT_EQ(doc->Model().clipboard.cells.front().CelName(), "2") << "the last frame of the other scene";
    Sheet().setFocus();
    doc->Cursor().GoTo({1, 0});
    Key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_TRUE(doc->Model().Scene().xsheet.Cell(1, 0).Shows("A", "2"));
    Run(CommandId::SheetOtherScene);
    EXPECT_FALSE(Frame().XsheetPane().ShowsOtherSheet());
}

} // namespace
} // namespace velmor::testing
