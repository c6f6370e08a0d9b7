#include "platform/files/Archive.h"
#include "scene/history/History.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

namespace velmor {
namespace {

// A journal may come from anywhere: nothing in it leads out of the scene's folder.
const std::vector<std::string> leadingOut{"../x", "/x",          "a/../../x", "a\\..\\x", std::string("x\0y", 3),
                                          "..",   "Fox/../../x", "../../x",   "a/b/c",    "Fox/",
                                          "./x"};

CStepChanges ChangesOf(const std::string& file, const std::string& movedFrom) {
    CStepChanges changes;
    changes.files.push_back({file, nullptr, nullptr, movedFrom});
    return changes;
}

TEST(HistoryBytes, NoStepLeadsOutOfTheScene) {
    EXPECT_TRUE(ReadChanges(WriteChanges(ChangesOf("Fox/7.bit", "Sheet.xsheet"))));
    for (const std::string& file : leadingOut) {
        EXPECT_FALSE(ReadChanges(WriteChanges(ChangesOf(file, {})))) << file;
        EXPECT_FALSE(ReadChanges(WriteChanges(ChangesOf("Fox/7.bit", file)))) << file;
        CStepChanges painting;
        painting.image = file;
        EXPECT_FALSE(ReadChanges(WriteChanges(painting))) << file;
    }
    EXPECT_FALSE(ReadChanges(WriteChanges(ChangesOf("", {}))));
}

TEST(HistoryBytes, NoSessionLeadsOutOfTheScene) {
    const CHistorySession session{"Fox", SourceMode::Cels, "Fox/7.bit", 3, 4, {1, 2, 3, 4}};
    EXPECT_EQ(ReadSession(WriteSession(session)), session);
    for (const std::string& name : leadingOut) {
        CHistorySession other = session;
        other.image = name;
        EXPECT_EQ(ReadSession(WriteSession(other)), CHistorySession()) << name;
        other = session;
        other.folder = name;
        EXPECT_EQ(ReadSession(WriteSession(other)), CHistorySession()) << name;
    }
}

TEST(HistoryBytes, ASessionSelectsCellsThatThereCanBe) {
    CHistorySession session{"Fox", SourceMode::Cels, "Fox/7.bit", 3, 4, {}};
    for (const CXSheetSelection& selection :
         {CXSheetSelection{-1, 2, 3, 4}, {1, 2, -3, 4}, {2, 1, 3, 4}, {1, 2, 4, 3}}) {
        session.selection = selection;
        CHistorySession expected = session;
        expected.selection = {};
        EXPECT_EQ(ReadSession(WriteSession(session)), expected) << "the image under edit is not lost for it";
    }
}

TEST(HistoryBytes, NumbersThatCannotGrowAreNotTaken) {
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    CScene scene;
    scene.xsheet = CXSheet(2, 4);
    CScene after = scene;
    after.camera.MutableAt(1).panX = 3;
    CStepChanges changes;
    changes.scene = CSceneChange(scene, after);
    CArchiveWriter saved;
    saved.WriteWord(static_cast<std::uint64_t>(most));
    CFileStamp().Write(saved);
    CJournalContents contents{{{most, WriteHeading({}), 9}}, {{most, most, true}}, {}};
    contents.notes["saved/Wild.xsheet"] = std::move(saved).Take();
    CHistory history;
    history.Open(nullptr, std::move(contents), "Wild.xsheet", "/nowhere");
    history.NoteSaved("Wild.xsheet", {});
    history.Record({}, changes, scene.xsheet, {});
    ASSERT_NE(history.NextUndo(), nullptr);
    EXPECT_GT(history.NextUndo()->id, 0);
    ASSERT_TRUE(history.Unsaved("/nowhere"));
    EXPECT_EQ(history.Unsaved("/nowhere")->changes, 1);
}

} // namespace
} // namespace velmor
