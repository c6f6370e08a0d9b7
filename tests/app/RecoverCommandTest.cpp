#include "CommandLineFixture.h"

#include "platform/files/Profile.h"
#include "scene/AssetOperations.h"
#include "scene/CelPainting.h"
#include "scene/SceneHistory.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneModel.h"
#include "scene/Settings.h"
#include "scene/SilentPrompter.h"
#include "scene/VelmorltDoc.h"
#include "scene/XSheetCursor.h"
#include "scene/XSheetOperations.h"
#include "scene/history/SceneJournal.h"

#include <regex>
#include <unistd.h>

namespace velmor {
namespace {

using testing::CommandLine;
using testing::CRun;

class CQuietPrompter : public CSilentPrompter {
public:
    void ShowMessage(const std::string&) override {}
};

class RecoverCommand : public CommandLine {
protected:
    /// A cell is pasted onto the second level twice and a line is drawn on A 1; then the program dies.
    void LoseWork(const std::string& name = "Test", bool withStroke = true) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            Animate(name, withStroke);
            ::_exit(0);
        }
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_EQ(status, 0);
    }
    CRun Recover(const std::string& arguments = {}) {
        return Run("recover " + Database() + "--journals " + journals.string() + " " + arguments);
    }
    Path Journal(const std::string& name = "Test") const {
        return JournalFile(journals, CScenePaths(WithSeparator(database.string()), name), name);
    }
    /// What the journal has, from oldest to newest.
    std::vector<HistoryEntryKind> Steps() const {
        std::unique_ptr<CJournal> journal;
        CJournalContents contents;
        EXPECT_TRUE(CJournal::Open(Journal(), journal, contents));
        CHistory history;
        history.Open(std::move(journal), std::move(contents), "Test.xsheet", scene.folder);
        std::vector<HistoryEntryKind> kinds;
        for (const CHistory::CStep& step : history.Steps())
            kinds.push_back(step.heading.kind);
        return kinds;
    }
    CScene Saved() const {
        CScene read;
        EXPECT_TRUE(LoadXSheet(scene.folder / "Test.xsheet", read));
        return read;
    }
    bool IsDrawn() const {
        CCelImg cel;
        EXPECT_TRUE(cel.Load(scene.folder / "A" / "1.bit"));
        return cel.IsLine(10, 10);
    }

    const std::filesystem::path journals = folder / "journals";
    const std::string works = "3 changes from \\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d to \\d{4}-.*:\\d\\d, ";

private:
    // Objects that would write when they end do not.
    void Animate(const std::string& name, bool withStroke) const {
        auto* profile = new CProfile;
        auto* prompter = new CQuietPrompter;
        Set(*profile, setting::databaseDir, database.string());
        auto* document = new CVelmorltDoc(*prompter, *profile, {.program = {}, .data = {}, .journals = journals});
        if (!document->Scenes().OpenScene(name))
            ::_exit(2);
        document->XSheet().Copy();
        for (const int frame : {3, 7}) {
            document->Cursor().GoTo({1, frame});
            document->XSheet().Paste();
        }
        document->History().Settle();
        if (!withStroke)
            return;
        document->Scenes().SetFolderName("A");
        document->Assets().EditCel("1");
        document->Painting().Change("Stroke", [](CCelImg& cel) {
            cel.SetLine(10, 10, true);
            return CPaintResult{{}, {10, 10, 11, 11}};
        });
        document->History().Settle();
    }
};

TEST_F(RecoverCommand, ToldFirstThenSaved) {
    EXPECT_EQ(Recover("--list").output, "");
    EXPECT_FALSE(FileExists(journals)) << "looking leaves no trace";
    testing::CTestScene other(database, "Other");
    ASSERT_NO_FATAL_FAILURE(LoseWork());
    const auto files = Contents();
    const std::vector<HistoryEntryKind> steps = Steps();
    for (const std::string arguments : {"--list", "--list Test"}) {
        const CRun list = Recover(arguments);
        EXPECT_EQ(list.status, 0);
        EXPECT_EQ(list.error, "");
        EXPECT_TRUE(std::regex_match(list.output, std::regex("Test: " + works + "fits\n"))) << list.output;
    }
    EXPECT_EQ(Recover("--list Other").output, "");
    EXPECT_EQ(Contents(), files);
    EXPECT_EQ(Steps(), steps);

    const CRun recovered = Recover();
    EXPECT_EQ(recovered.status, 0) << recovered.error;
    EXPECT_EQ(recovered.output, "Test: 3 changes recovered\n");
    for (const int frame : {3, 7})
        EXPECT_TRUE(Saved().xsheet.Cell(1, frame).Shows("A", "1"));
    EXPECT_TRUE(IsDrawn());
    const CRun again = Recover();
    EXPECT_EQ(again.status, 0);
    EXPECT_EQ(again.output + again.error, "");
}

TEST_F(RecoverCommand, NoDrawingHasToBeOpen) {
    ASSERT_NO_FATAL_FAILURE(LoseWork("Test", false));
    const CRun recovered = Recover();
    EXPECT_EQ(recovered.status, 0) << recovered.error;
    EXPECT_EQ(recovered.output, "Test: 2 changes recovered\n");
    EXPECT_TRUE(Saved().xsheet.Cell(1, 7).Shows("A", "1"));
    EXPECT_FALSE(IsDrawn());
}

TEST_F(RecoverCommand, WhatDoesNotFitStaysUnlessItIsGivenUp) {
    ASSERT_NO_FATAL_FAILURE(LoseWork());
    scene.data.geometry.frameRate = 12;
    scene.Save();
    const auto files = Contents();
    const std::vector<HistoryEntryKind> steps = Steps();
    const CRun list = Recover("--list");
    EXPECT_EQ(list.status, 0);
    EXPECT_TRUE(std::regex_match(list.output, std::regex("Test: " + works + "does not fit: Test.xsheet\n")))
        << list.output;
    const CRun refused = Recover();
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.output, "");
    EXPECT_NE(refused.error.find("Test: These files have been changed by something else since:\nTest.xsheet"),
              std::string::npos)
        << refused.error;
    EXPECT_EQ(Contents(), files);
    EXPECT_EQ(Steps(), steps);
    EXPECT_EQ(Recover("--discard").output, "Test: 3 changes discarded\n");
    EXPECT_EQ(Saved(), scene.data);
    EXPECT_EQ(Recover("--list").output, "");
}

TEST_F(RecoverCommand, DiscardedWorkStaysInTheHistory) {
    ASSERT_NO_FATAL_FAILURE(LoseWork());
    const auto files = Contents();
    std::vector<HistoryEntryKind> steps = Steps();
    EXPECT_EQ(Recover("--discard --list").status, 2);
    const CRun discarded = Recover("--discard Test");
    EXPECT_EQ(discarded.status, 0) << discarded.error;
    EXPECT_EQ(Contents(), files);
    steps.push_back(HistoryEntryKind::Break);
    EXPECT_EQ(Steps(), steps);
    EXPECT_EQ(Recover("--list").output, "");
}

TEST_F(RecoverCommand, WhatCannotBeOpenedIsToldAndTheOthersAreRecovered) {
    testing::CTestScene other(database, "Other");
    ASSERT_NO_FATAL_FAILURE(LoseWork("Other"));
    ASSERT_NO_FATAL_FAILURE(LoseWork());
    {
        std::unique_ptr<CJournal> journal;
        CJournalContents contents;
        ASSERT_TRUE(CJournal::Open(Journal("Other"), journal, contents));
        const CRun run = Recover();
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.output, "Test: 3 changes recovered\n");
        EXPECT_EQ(run.error.find("Other: The journal is used by another program."), 0U) << run.error;
        EXPECT_EQ(Recover("--list Other").status, 1);
    }
    std::filesystem::remove(other.folder / "Other.xsheet");
    EXPECT_EQ(Recover().status, 1);
    EXPECT_FALSE(FileExists(other.folder / "Other.xsheet"));
    other.Save();
    testing::WriteBytes(Journal("Other"), std::vector<std::uint8_t>(5000, 7));
    const CRun damaged = Recover();
    EXPECT_EQ(damaged.status, 1);
    EXPECT_EQ(damaged.error.find("Other: The file is no journal."), 0U) << damaged.error;
    EXPECT_EQ(Recover("Nobody").status, 1);
}

TEST_F(RecoverCommand, WorkThatCannotBeReadStays) {
    ASSERT_NO_FATAL_FAILURE(LoseWork());
    {
        std::unique_ptr<CJournal> journal;
        CJournalContents contents;
        ASSERT_TRUE(CJournal::Open(Journal(), journal, contents));
        const CJournalContents::CHeading& last = contents.steps.back();
        journal->Write({{{last.id, last.heading, {1, 2, 3}}}, {}, {}, 0, {}});
    }
    const auto files = Contents();
    EXPECT_NE(Recover("--list").output.find("cannot be read\n"), std::string::npos);
    const CRun run = Recover();
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.error.find("cannot be read\n"), std::string::npos);
    EXPECT_EQ(Contents(), files);
    EXPECT_NE(Recover("--list").output, "") << "it is there for whoever can read it";
}

} // namespace
} // namespace velmor
