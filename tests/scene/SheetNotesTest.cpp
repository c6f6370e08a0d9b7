#include "scene/notes/SheetNotes.h"
#include "DocumentFixture.h"
#include "XSheetScene.h"
#include "scene/DialogRequests.h"
#include "xsheet/SheetNotesPlace.h"
#include "xsheet/XSheetFile.h"

namespace velmor::testing {
namespace {

class SheetNotesTest : public CXSheetScene {
protected:
    CSheetNotes notes{Context(), cursor};

    void SetUp() override {
        CXSheetScene::SetUp();
        SetLevels(2, 8);
        for (int frame = 0; frame < 6; ++frame)
            Put(0, frame, std::string(1, "AABBCC"[frame]));
    }
    /// The marks of a level by their first letters.
    std::string Marks(int level = 0) const {
        std::string row;
        for (int frame = 0; frame < scene.xsheet.FrameCount(); ++frame)
            row += ".kbis"[static_cast<int>(scene.xsheet.Cell(level, frame).Note().mark)];
        return row;
    }
    void Select(int level, int firstFrame, int lastFrame) {
        cursor.GoTo({level, firstFrame});
        cursor.SetSelEndY(lastFrame);
        hints.clear();
    }
    void NoteAt(int level, int frame) { notes.SetAt({level, frame}, {SheetMark::Key, NoteColor::Red, "x"}); }
    CSheetCell Cursor() const { return model.CursorCell(); }
};

TEST_F(SheetNotesTest, MarksGoOnWhereDrawingsBeginAndOffAgain) {
    Select(0, 0, 5);
    notes.Mark(SheetMark::Inbetween);
    EXPECT_EQ(Marks(), "i.i.i...");
    EXPECT_EQ(hints, Hints{8}) << "no picture changes";
    Select(0, 0, 0);
    notes.Mark(SheetMark::Key);
    Select(0, 0, 5);
    notes.Mark(SheetMark::Inbetween);
    EXPECT_EQ(Marks(), "i.i.i...") << "not all had it";
    notes.Mark(SheetMark::Inbetween);
    EXPECT_EQ(Marks(), "........");
    Undo();
    Undo();
    EXPECT_EQ(Marks(), "k.i.i...");
    Select(0, 1, 1);
    notes.Mark(SheetMark::StopHold);
    EXPECT_EQ(Marks(), "ksi.i...") << "one cell is marked whatever it holds";
    Select(1, 2, 4);
    notes.Mark(SheetMark::Breakdown);
    EXPECT_EQ(Marks(1), "..bbb...") << "and so are empty ones";
    notes.SetColor(NoteColor::Blue);
    EXPECT_EQ(scene.xsheet.Cell(1, 3).Note(), (CSheetNote{SheetMark::Breakdown, NoteColor::Blue, {}}));
    notes.Clear();
    EXPECT_EQ(Marks(1), "........");
    EXPECT_TRUE(scene.xsheet.Cell(1, 3).Note().IsEmpty());
}

TEST_F(SheetNotesTest, CommentsAreAskedFor) {
    scene.xsheet.SetLevelName(0, "Fox");
    Select(0, 3, 3);
    prompter.Answer(CSheetNote{SheetMark::Key, {}, std::string(1001, 'x')});
    notes.EditAtCursor();
    EXPECT_EQ(prompter.TakeMessages(), std::vector<std::string>{"The comment is too long."});
    EXPECT_TRUE(scene.xsheet.Cell(0, 3).Note().IsEmpty());
    const CSheetNote note{SheetMark::Key, NoteColor::Green, "Blink"};
    prompter.Answer(note);
    notes.EditAtCursor();
    EXPECT_EQ(scene.xsheet.Cell(0, 3).Note(), note);
    EXPECT_EQ(std::any_cast<CNoteRequest>(prompter.lastRequest).place, "Fox, frame 4");
    prompter.Answer(CSheetNote{{}, {}, "Cut"});
    notes.EditAtFrame();
    const auto request = std::any_cast<CNoteRequest>(prompter.lastRequest);
    EXPECT_EQ(request.place, "Frame 4");
    EXPECT_FALSE(request.hasMark);
    EXPECT_EQ(scene.frameNotes.At(3).comment, "Cut");
    Undo();
    EXPECT_TRUE(scene.frameNotes.At(3).IsEmpty());
    Undo();
    EXPECT_TRUE(scene.xsheet.Cell(0, 3).Note().IsEmpty());
    notes.EditAtCursor(); // cancelled
    EXPECT_FALSE(CanUndo(model));
}

TEST_F(SheetNotesTest, AreGoneToOneAfterTheOther) {
    notes.GoToNext();
    EXPECT_EQ(Cursor(), CSheetCell()) << "there is none";
    NoteAt(1, 2);
    NoteAt(0, 2);
    NoteAt(1, 5);
    notes.SetAtFrame(4, {{}, NoteColor::Red, {}});
    cursor.GoTo({0, 0});
    std::vector<CSheetCell> way;
    for (int step = 0; step < 5; ++step) {
        notes.GoToNext();
        way.push_back(Cursor());
    }
    EXPECT_EQ(way, (std::vector<CSheetCell>{{0, 2}, {1, 2}, {0, 4}, {1, 5}, {0, 2}})) << "and round";
    std::ranges::reverse(way);
    for (std::size_t step = 1; step < way.size(); ++step) {
        notes.GoToPrevious();
        EXPECT_EQ(Cursor(), way[step]);
    }
    cursor.GoTo({1, 3});
    prompter.Answer(std::size_t{2});
    notes.ShowList();
    const auto request = std::any_cast<CNoteListRequest>(prompter.lastRequest);
    ASSERT_EQ(request.notes.size(), 4U);
    EXPECT_EQ(request.notes[2].place, "Frame 5");
    EXPECT_EQ(request.current, 1U) << "the one before the cursor";
    EXPECT_EQ(Cursor(), (CSheetCell{0, 4}));
}

TEST_F(SheetNotesTest, AHoldEndsAtTheCursor) {
    NoteAt(0, 3);
    cursor.GoTo({0, 3});
    notes.StopHold();
    EXPECT_EQ(Row(0, 8), "AAB.CC..");
    EXPECT_EQ(Marks(), "...k....") << "what is noted there stays";
    notes.StopHold(); // there is nothing
    Undo();
    EXPECT_EQ(Row(0, 8), "AABBCC..");
}

class DamagedNotesTest : public CDocumentFixture {};

TEST_F(DamagedNotesTest, AreToldAndSetAside) {
    NewScene("S");
    doc->Notes().SetAtFrame(2, {{}, {}, "Cut"});
    ASSERT_TRUE(doc->Saving().SaveAll());
    const Path file = SceneFolder("S") / "S.xsheet.notes";
    ASSERT_TRUE(FileExists(file));
    WriteBytes(file, std::vector<std::uint8_t>(40, 7));
    prompter.TakeMessages();
    StartDocument();
    ASSERT_TRUE(doc->Model().sceneOpen);
    EXPECT_EQ(prompter.TakeMessages(),
              std::vector<std::string>{"Invalid or corrupted sheet notes file\n"
                                       "The scene is opened without its marks and notes.\n"
                                       "The damaged file is kept as S.xsheet.notes.damaged"});
    EXPECT_EQ(doc->Model().Scene().frameNotes, CFrameNotes());
    EXPECT_FALSE(FileExists(file));
    EXPECT_EQ(ReadBytes(SceneFolder("S") / "S.xsheet.notes.damaged").size(), 40U);
    doc->Notes().SetAtFrame(1, {{}, {}, "Again"});
    ASSERT_TRUE(doc->Saving().SaveAll());
    StartDocument();
    EXPECT_EQ(prompter.TakeMessages(), std::vector<std::string>());
    EXPECT_EQ(doc->Model().Scene().frameNotes.At(1).comment, "Again");
}

} // namespace
} // namespace velmor::testing
