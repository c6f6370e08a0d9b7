#include "DamagedFiles.h"
#include "SheetPictures.h"
#include "xsheet/SheetNotesFile.h"
#include "xsheet/SheetNotesPlace.h"
#include "xsheet/XSheetFile.h"

#include <gtest/gtest.h>

namespace velmor::testing {
namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes BytesOf(std::string_view text) {
    return {text.begin(), text.end()};
}

CSheetNote Commented(std::string comment) {
    return {SheetMark::Key, NoteColor::Red, std::move(comment)};
}

/// Notes of each kind, with all that has to be escaped.
CScene NotedScene() {
    CScene scene;
    scene.xsheet = SheetOf({"AAB.", "CC.."});
    scene.xsheet.MutableCell(0, 1).SetNote(Commented("Look:\n\\back\\n\tand up, füchslein"));
    scene.xsheet.MutableCell(1, 3).SetNote({SheetMark::StopHold, NoteColor::None, {}}); // at an empty cell
    scene.frameNotes.Set(2, {SheetMark::None, NoteColor::Violet, {}});
    scene.frameNotes.Set(3, Commented("Cut"));
    scene.sounds.Set({{2, "Bell"}, {0, "Meow", 100, 200, -60}});
    EXPECT_TRUE(scene.dialogue.Put({1, 2, "Fox", "Who\tis there?"}));
    return scene;
}

CScene WithoutNotes(const CScene& scene) {
    CScene bare;
    EXPECT_TRUE(DecodeXSheet(EncodeXSheet(scene), bare));
    return bare;
}

bool IsRefused(const Bytes& bytes) {
    const CScene before = WithoutNotes(NotedScene());
    CScene scene = before;
    const CStatus status = DecodeSheetNotes(bytes, scene);
    EXPECT_TRUE(status || (status.Message() == "Invalid or corrupted sheet notes file" && scene == before));
    return !status;
}

constexpr std::string_view head = "VELMOR SHEET NOTES 1\nxsheet\t00000000000000ff\n";

CScene Read(const std::string& lines) {
    CScene scene = WithoutNotes(NotedScene());
    EXPECT_TRUE(DecodeSheetNotes(BytesOf(std::string(head) + lines), scene)) << lines;
    return scene;
}

class SheetNotes : public ::testing::Test {
protected:
    CScene Load() const {
        CScene scene;
        CStatus notes;
        EXPECT_TRUE(LoadXSheet(sheet, scene, &notes));
        EXPECT_TRUE(notes) << notes.Message();
        return scene;
    }
    std::vector<std::string> Files() const { return ListFiles(folder.Path(), ""); }

    const CTempFolder folder;
    const Path sheet = folder / "S.xsheet";
    const Path pending = folder / "S.xsheet.notes.saving";
};

TEST_F(SheetNotes, StandInAFileOfTheirOwnAsLongAsThereAreAny) {
    const CScene scene = NotedScene();
    ASSERT_TRUE(SaveXSheet(sheet, scene));
    EXPECT_EQ(Load(), scene);
    EXPECT_EQ(Files(), (std::vector<std::string>{"S.xsheet", "S.xsheet.notes"}));
    EXPECT_EQ(ReadBytes(sheet), EncodeXSheet(WithoutNotes(scene))) << "the xsheet's format is fixed";
    ASSERT_TRUE(SaveXSheet(sheet, WithoutNotes(scene)));
    EXPECT_EQ(Files(), std::vector<std::string>{"S.xsheet"});
    EXPECT_EQ(Load(), WithoutNotes(scene));
}

// Whatever of the files has reached the disk: what is read is what was there before or what was to be.
TEST_F(SheetNotes, GoWithTheirXSheetWhenASavingIsCutOff) {
    const CScene before = NotedScene();
    CScene moved = before;
    moved.xsheet.SwapLevels(0, 1);
    CScene noted = before; // the same xsheet to the byte
    noted.xsheet.MutableCell(0, 0).SetNote(Commented("new"));
    for (const CScene& after : {moved, noted, WithoutNotes(before), WithoutNotes(moved)}) {
        const CSheetBytes bytes = EncodeSheet(after);
        const bool isSameSheet = bytes.xsheet == EncodeXSheet(before);
        for (int written = 0; written < 3; ++written) {
            ASSERT_TRUE(SaveXSheet(sheet, before));
            if (written > 0)
                WriteBytes(pending, bytes.notes);
            if (written > 1)
                WriteBytes(sheet, bytes.xsheet);
            const bool isDone = written > 1 || (written > 0 && isSameSheet);
            EXPECT_EQ(Load(), isDone ? after : before) << written;
            // The next saving is cut off at its beginning: what was in force has been put in its place.
            CNotesSaving next(sheet);
            const CSheetBytes last = EncodeSheet(CScene());
            ASSERT_TRUE(next.Prepare(last.notes, last.hasNotes));
            EXPECT_EQ(Load(), isDone ? after : before) << written;
        }
        EXPECT_FALSE(FileExists(pending)) << "what comes to nothing is gone";
    }
}

TEST_F(SheetNotes, SurviveAnXSheetOfAProgramThatDoesNotKnowThem) {
    const CScene scene = NotedScene();
    ASSERT_TRUE(SaveXSheet(sheet, scene));
    CScene theirs = WithoutNotes(scene);
    theirs.xsheet.SetFrameCount(2);
    theirs.xsheet.DeleteLevel(1);
    theirs.sounds.Set({{0, "Other"}});
    WriteBytes(sheet, EncodeXSheet(theirs));
    const CScene read = Load();
    EXPECT_EQ(WithoutNotes(read), theirs);
    EXPECT_EQ(read.xsheet.Cell(0, 1).Note(), scene.xsheet.Cell(0, 1).Note());
    EXPECT_EQ(read.frameNotes, scene.frameNotes) << "they are there again with their frames";
    EXPECT_TRUE(read.sounds.All().front().IsPlain()) << "it is another sound";
}

TEST_F(SheetNotes, ThatAreDamagedCostNothingElse) {
    const Bytes good = EncodeSheet(NotedScene()).notes;
    ForEachDamage(good, [](const Bytes& bytes) {
        CScene scene = WithoutNotes(NotedScene());
        if (!IsRefused(bytes) && DecodeSheetNotes(bytes, scene)) {
            const Bytes written = EncodeSheetNotes(scene, 7);
            CScene again = WithoutNotes(scene);
            EXPECT_TRUE(DecodeSheetNotes(written, again));
            EXPECT_EQ(again, scene);
        }
    });
    for (const char* line :
         {"mark\t1\t1\tkey\n", "mark\tone\t1\tkey\tred\n", "mark\t1\t1\tkey\tred\tmore\n",
          "comment\t1\t1\twith \\x\n", "dialogue\t1\t2\tFox\n", "sound\t1\tMeow\t0\t0\t99999999999\n"})
        EXPECT_TRUE(IsRefused(BytesOf(std::string(head) + line))) << line;
    EXPECT_TRUE(IsRefused(BytesOf("VELMOR SHEET NOTES 2\nxsheet\t00000000000000ff\n")));
    ASSERT_TRUE(SaveXSheet(sheet, NotedScene()));
    WriteBytes(SheetNotesFile(sheet), BytesOf("rubbish"));
    CScene scene;
    CStatus notes;
    EXPECT_TRUE(LoadXSheet(sheet, scene, &notes));
    EXPECT_EQ(notes.Message(), "Invalid or corrupted sheet notes file");
    EXPECT_EQ(scene, WithoutNotes(NotedScene()));
    Path kept;
    EXPECT_TRUE(SetSheetNotesAside(sheet, kept));
    EXPECT_EQ(kept, folder / "S.xsheet.notes.damaged");
    EXPECT_EQ(Load(), scene);
}

TEST(SheetNotesFile, TakesWhatMakesSenseAndKeepsWhatANewerVersionHasWritten) {
    const CScene bare = WithoutNotes(NotedScene());
    for (const char* nowhere : {"mark\t3\t1\tkey\tred\n", "mark\t0\t1\tkey\tred\n", "comment\t1\t5\tgone\n",
                                "frame mark\t2001\tkey\tred\n", "frame comment\t-1000000000\tgone\n",
                                "sound\t2\tMeow\t1\t1\t1\n", "dialogue\t4\t2\tFox\tbackwards\n"})
        EXPECT_EQ(Read(nowhere), bare) << nowhere;
    EXPECT_EQ(Read("mark\t1\t1\tsmear\tred\n").xsheet.Cell(0, 0).Note(),
              (CSheetNote{SheetMark::None, NoteColor::Red, {}}));
    EXPECT_EQ(Read("comment\t1\t1\t" + std::string(999, 'x') + "ü\n").xsheet.Cell(0, 0).Note().comment,
              std::string(999, 'x'))
        << "no half of a letter";
    EXPECT_EQ(Read("comment\t1\t1\t\xff\n"), bare) << "this is no text";
    const CScene newer = Read("curve\t1\t2\t\\q\t7\nmark\t1\t1\tkey\tred\ncurve\t3\n");
    EXPECT_EQ(*newer.unknownNotes, "curve\t1\t2\t\\q\t7\ncurve\t3\n");
    CScene again = bare;
    EXPECT_TRUE(DecodeSheetNotes(EncodeSheet(newer).notes, again));
    EXPECT_EQ(again, newer);
}

TEST(FrameNotes, MoveWithTheirFrames) {
    CFrameNotes notes;
    for (const int frame : {1, 5, 1999})
        notes.Set(frame, Commented(std::to_string(frame)));
    const CFrameNotes before = notes;
    notes.InsertFrames(2, 3);
    EXPECT_EQ(notes.At(1).comment, "1");
    EXPECT_EQ(notes.At(8).comment, "5");
    EXPECT_TRUE(notes.At(5).IsEmpty() && notes.At(1999).IsEmpty());
    notes.DeleteFrames(2, 3);
    EXPECT_EQ(notes.At(5).comment, "5");
    notes.DeleteFrames(1, 100000);
    EXPECT_EQ(notes, CFrameNotes());
    notes = before;
    notes.InsertFrames(0, 100000);
    EXPECT_EQ(notes, CFrameNotes());
}

} // namespace
} // namespace velmor::testing
