// Marks and notes in the assembled window.

#include "MainFrameFixture.h"
#include "TestScene.h"
#include "scene/SceneSaving.h"
#include "scene/XSheetCursor.h"
#include "scene/notes/SheetNotes.h"
#include "views/xsheet/XSheetView.h"
#include "views/xsheet/XsheetFrame.h"

#include <QImage>

namespace velmor::testing {
namespace {

class NotesTest : public CMainFrameFixture {
protected:
    NotesTest() {
        EXPECT_TRUE(doc->Scenes().OpenScene("Test"));
        Frame().ShowPane(StackedPane::Xsheet);
        QCoreApplication::processEvents();
    }
    ~NotesTest() override { EndFrame(); }

    QWidget& Sheet() { return *Frame().findChild<QWidget*>("xsheet"); }
    QImage Picture() { return Sheet().grab().toImage(); }
    const CSheetNote& Note(int level, int frame) const {
        return doc->Model().Scene().xsheet.Cell(level, frame).Note();
    }

    CTestScene scene{Database()};
};

// The part of two pictures that differs.
QRect Difference(const QImage& before, const QImage& after) {
    QRect box;
    for (int y = 0; y < before.height(); ++y)
        for (int x = 0; x < before.width(); ++x)
            if (before.pixel(x, y) != after.pixel(x, y))
                box |= QRect(x, y, 1, 1);
    return box;
}

TEST_F(NotesTest, KeysMarkInTheSheetAlone) {
    struct CCase {
        Qt::Key key;
        SheetMark mark;
    };
    doc->Cursor().GoTo({1, 3}); // an empty cell
    Sheet().setFocus();
    const QImage before = Picture();
    for (const CCase& test : {CCase{Qt::Key_K, SheetMark::Key}, CCase{Qt::Key_B, SheetMark::Breakdown},
                              CCase{Qt::Key_I, SheetMark::Inbetween}, CCase{Qt::Key_X, SheetMark::StopHold}}) {
        Key(test.key);
        EXPECT_EQ(Note(1, 3).mark, test.mark);
        const CXSheetGeometry geometry;
        const QRect cell(geometry.frameColumnWidth + geometry.levelWidth,
                         geometry.headerHeight + 3 * geometry.rowHeight, geometry.levelWidth, geometry.rowHeight);
        const QRect changed = Difference(before, Picture());
        EXPECT_FALSE(changed.isEmpty());
        EXPECT_TRUE(cell.contains(changed)) << "nothing else changes";
        Run(CommandId::EditUndo);
        EXPECT_EQ(Picture(), before) << "without marks nothing of them is seen";
    }
    Frame().ShowPane(StackedPane::CelEditor);
    Frame().findChild<QWidget*>("celView")->setFocus();
    Key(Qt::Key_K);
    EXPECT_TRUE(Note(1, 3).IsEmpty());
}

TEST_F(NotesTest, CommentsStayWithTheirCellsOverARestart) {
    doc->Cursor().GoTo({0, 5});
    Sheet().setFocus();
    prompter.Answer(CSheetNote{SheetMark::Key, NoteColor::Red, "Blink\nhere"});
    Key(Qt::Key_N);
    prompter.Answer(CSheetNote{{}, NoteColor::Blue, "Cut"});
    Key(Qt::Key_N, Qt::ShiftModifier);
    EXPECT_EQ(doc->Model().Scene().frameNotes.At(5).comment, "Cut");
    Frame().UpdateCommands();
    EXPECT_TRUE(Frame().Action(CommandId::NoteKey)->isChecked());
    EXPECT_TRUE(Frame().Action(CommandId::NoteRed)->isChecked());
    doc->Cursor().GoTo({0, 2});
    prompter.Answer(2);
    Run(CommandId::ExposureInsertTime);
    EXPECT_EQ(Note(0, 7).comment, "Blink\nhere");
    EXPECT_EQ(doc->Model().Scene().frameNotes.At(7).comment, "Cut");
    ASSERT_TRUE(doc->Saving().SaveAll());
    const CScene before = doc->Model().Scene();
    EndFrame();
    StartDocument();
    EXPECT_EQ(doc->Model().Scene(), before);
    Frame().ShowPane(StackedPane::Xsheet);
    Sheet().setFocus();
    doc->Cursor().GoTo({2, 0});
    Key(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(doc->Model().CursorCell(), (CSheetCell{0, 7}));
    EXPECT_EQ(prompter.statusTexts.back(), "Key: Blink here \u00b7 Cut");
    Run(CommandId::NoteEndHold);
    EXPECT_FALSE(doc->Model().Scene().xsheet.Cell(0, 7).IsUsed());
    EXPECT_EQ(Note(0, 7).comment, "Blink\nhere");
}

} // namespace
} // namespace velmor::testing
