#include "TempFolder.h"
#include "scene/history/History.h"
#include "xsheet/SheetNotesPlace.h"

#include <gtest/gtest.h>

namespace velmor::testing {
namespace {

// Two levels that look the same but for a note: exchanging them changes no byte of the xsheet, and done twice it is
// undone.
CScene Alike() {
    CScene scene;
    scene.xsheet = CXSheet(2, 4);
    scene.xsheet.MutableCell(0, 1).SetNote({SheetMark::Key, NoteColor::None, "here"});
    return scene;
}

class SheetSaving : public ::testing::Test {
protected:
    void Open(CHistory& history) const {
        std::unique_ptr<CJournal> journal;
        CJournalContents contents;
        ASSERT_TRUE(CJournal::Open(folder / "S.journal", journal, contents));
        history.Open(std::move(journal), std::move(contents), "S.xsheet", folder.Path());
    }
    static void Do(CHistory& history, const CScene& before, const CScene& after) {
        CStepChanges changes;
        changes.scene = CSceneChange(before, after);
        history.Record({}, changes, after.xsheet, {});
        history.WaitUntilWritten();
    }

    const CTempFolder folder;
    const Path sheet = folder / "S.xsheet";
};

TEST_F(SheetSaving, ThatIsCutOffIsRecoveredFromExactly) {
    const CScene first = Alike();
    CScene second = first;
    second.xsheet.SwapLevels(0, 1);
    CScene third = second;
    third.xsheet.MutableCell(1, 2).SetNote({SheetMark::None, NoteColor::Red, {}});
    CScene fourth = third;
    fourth.xsheet.MutableCell(0, 0) = CXSheetCell::FromFile("Fox", "1", {}, 0, 1, 1, {10, 10});
    CScene none = first;
    none.xsheet.MutableCell(0, 1).SetNote({});
    for (const CScene& last : {second, third, fourth, none})
        for (int written = 0; written < 5; ++written) {
            SCOPED_TRACE(written);
            std::filesystem::remove(folder / "S.journal");
            std::filesystem::remove(folder / "S.xsheet.notes.saving");
            {
                CHistory history;
                Open(history);
                ASSERT_TRUE(SaveXSheet(sheet, first));
                history.NoteSheetSaved(folder.Path());
                Do(history, first, second);
                Do(history, second, last);
                history.NoteSheetSaving([&] { return EncodeSheet(last); });
                const CSheetBytes bytes = EncodeSheet(last);
                if (written > 0)
                    WriteBytes(folder / "S.xsheet.notes.saving", bytes.notes);
                if (written > 1)
                    WriteBytes(sheet, bytes.xsheet);
                if (written > 2) {
                    ASSERT_TRUE(SaveXSheet(sheet, last));
                }
                if (written > 3)
                    history.NoteSheetSaved(folder.Path());
            }
            CHistory history;
            Open(history);
            const std::optional<CUnsavedWork> unsaved = history.Unsaved(folder.Path());
            EXPECT_TRUE(!unsaved || unsaved->misfit.empty()) << unsaved->misfit;
            const bool isSameSheet = EncodeXSheet(last) == EncodeXSheet(first);
            EXPECT_EQ(unsaved.has_value(), written < (isSameSheet ? 1 : 2));
            CScene scene;
            ASSERT_TRUE(LoadXSheet(sheet, scene));
            ASSERT_TRUE(history.Replay(scene));
            EXPECT_EQ(scene, last);
            EXPECT_TRUE(history.IsSheetAsNoted(folder.Path()));
        }
}

TEST_F(SheetSaving, NotesOfSomebodyElseAreNoticed) {
    const CScene scene = Alike();
    CScene after = scene;
    after.xsheet.SetLevelName(0, "Fox");
    for (const bool isGone : {false, true}) {
        std::filesystem::remove(folder / "S.journal");
        CHistory history;
        Open(history);
        ASSERT_TRUE(SaveXSheet(sheet, scene));
        history.NoteSheetSaved(folder.Path());
        EXPECT_TRUE(history.IsSheetAsNoted(folder.Path()));
        Do(history, scene, after);
        if (isGone)
            std::filesystem::remove(SheetNotesFile(sheet));
        else
            WriteBytes(SheetNotesFile(sheet), EncodeSheet(CScene()).notes);
        EXPECT_FALSE(history.IsSheetAsNoted(folder.Path()));
        ASSERT_TRUE(history.Unsaved(folder.Path()));
        EXPECT_EQ(history.Unsaved(folder.Path())->misfit, "S.xsheet.notes\n");
    }
}

} // namespace
} // namespace velmor::testing
