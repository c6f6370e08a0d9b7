#include "DocumentFixture.h"
#include "RandomAnimator.h"
#include "scene/DialogRequests.h"
#include "scene/Settings.h"
#include "scene/history/SceneFiles.h"
#include "xsheet/XSheetFile.h"

namespace velmor::testing {
namespace {

class Recovery : public CDocumentFixture {
protected:
    Recovery() {
        journals = folder / "journals";
        StartDocument();
    }
    void Begin(unsigned seed) {
        NewScene("S", 30);
        animator = std::make_unique<CRandomAnimator>(*doc, prompter, seed);
        animator->SetUp();
        static_cast<void>(doc->Saving().SaveAll());
        prompter.TakeMessages();
    }
    void Act(int commands, bool mayDelete = false) {
        for (int command = 0; command < commands; ++command)
            animator->Act(mayDelete);
        prompter.TakeMessages();
    }
    /// What a crash leaves: nothing is saved when a document just ends.
    void Restart(std::optional<RecoveryAnswer> answer) {
        prompter.ForgetAnswers();
        if (answer)
            prompter.Answer(*answer);
        StartDocument();
        prompter.ForgetAnswers();
        animator = std::make_unique<CRandomAnimator>(*doc, prompter, 1);
    }
    CSceneState State() const { return CSceneState::Of(doc->Model()); }
    const CHistory& History() const { return doc->Model().history; }
    void AddLevel(const std::string& name) {
        prompter.Answer(name);
        doc->XSheet().AddLevel();
    }
    int Levels() const { return doc->Model().Scene().xsheet.LevelCount(); }
    Path Sheet() const { return SceneFolder("S") / "S.xsheet"; }
    std::size_t CountJournals() const { return ListFiles(journals, ".journal").size(); }

    std::unique_ptr<CRandomAnimator> animator;
};

TEST_F(Recovery, WhateverWasDoneComesBack) {
    for (unsigned seed = 1; seed <= 12; ++seed) {
        SCOPED_TRACE(seed);
        if (seed > 1)
            std::filesystem::remove_all(SceneFolder("S"));
        if (seed > 1)
            StartDocument();
        std::filesystem::remove_all(journals);
        Begin(seed);
        Act(60, seed % 3 == 0);
        for (int undone = static_cast<int>(seed % 4); undone > 0; --undone)
            doc->History().Undo();
        Act(static_cast<int>(seed % 2));
        prompter.TakeMessages();
        const CSceneState before = State();
        const std::string undo = doc->History().UndoText();
        Restart(RecoveryAnswer::Recover);
        EXPECT_EQ(prompter.TakeMessages(), std::vector<std::string>());
        EXPECT_EQ(State().DifferenceTo(before), "");
        EXPECT_EQ(doc->History().UndoText(), undo);
    }
}

// A file has no alpha of a picture that is nearly opaque.
TEST_F(Recovery, WhatAFileDoesNotHoldIsNotWhatIsOpen) {
    Begin(1);
    doc->Scenes().SetSourceMode(SourceMode::Pictures);
    doc->Assets().EditCel("Sky");
    const CColor white{255, 255, 255, 255};
    doc->Painting().Change("Thin", [](CCelImg& picture) {
        picture.SetColorAt(3, 4, {10, 20, 30, 254});
        picture.SetModified(true);
        return CPaintResult{CStatus(), {3, 4, 4, 5}};
    });
    ASSERT_TRUE(doc->Saving().SaveAll());
    Restart({});
    doc->Scenes().SetSourceMode(SourceMode::Pictures);
    doc->Assets().EditCel("Sky");
    ASSERT_EQ(doc->Model().celImg.Width(), 70);
    EXPECT_EQ(doc->Model().celImg.ColorAt(3, 4), (CColor{10, 20, 30, 255}));
    doc->History().Undo();
    EXPECT_EQ(doc->Model().celImg.ColorAt(3, 4), white);
    doc->History().Redo();
    EXPECT_EQ(doc->Model().celImg.ColorAt(3, 4), (CColor{10, 20, 30, 255}));
    EXPECT_EQ(prompter.TakeMessages(), std::vector<std::string>());
}

TEST_F(Recovery, TellsWhatItFoundAndComesBackWhereItWas) {
    Begin(1);
    doc->Scenes().SetFolderName("Owl");
    doc->Assets().EditCel("2");
    doc->Cursor().GoTo({0, 7});
    ASSERT_TRUE(doc->Painting().Begin(CelTool::Pen, {5, 5}));
    doc->Painting().Move({30, 30});
    doc->Painting().End({30, 30});
    AddLevel("Front");
    doc->XSheet().Reverse(); // changes nothing
    const CHistorySession session = doc->Model().Session();
    Restart(RecoveryAnswer::Recover);
    const auto request = std::any_cast<CRecoveryRequest>(prompter.lastRequest);
    EXPECT_EQ(request.scene, "S");
    EXPECT_EQ(request.changes, 2);
    EXPECT_LE(request.firstTime, request.lastTime);
    EXPECT_TRUE(request.fits);
    EXPECT_EQ(request.picture.rgb.size(),
              static_cast<std::size_t>(request.picture.width * request.picture.height * 3));
    EXPECT_FALSE(request.picture.rgb.empty());
    EXPECT_EQ(doc->Model().Session(), session);
    EXPECT_TRUE(doc->Model().celImg.IsModified());
    EXPECT_EQ(Levels(), 2);
}

TEST_F(Recovery, DiscardedWorkIsGoneForGood) {
    Begin(1);
    const CSceneState saved = State();
    AddLevel("Front");
    doc->History().Undo();
    AddLevel("Middle");
    Restart(RecoveryAnswer::Discard);
    EXPECT_EQ(State().scene, saved.scene);
    EXPECT_FALSE(CanUndo(doc->Model()));
    AddLevel("Back");
    EXPECT_TRUE(CanUndo(doc->Model()));
    static_cast<void>(doc->Saving().SaveAll());
    Restart(std::nullopt);
    EXPECT_EQ(Levels(), 2);
    EXPECT_TRUE(CanUndo(doc->Model()));
}

TEST_F(Recovery, LaterAsksAgainAndTouchesNothing) {
    Begin(1);
    AddLevel("Front");
    doc.reset();
    const auto sheet = ReadBytes(Sheet());
    Restart(RecoveryAnswer::Later);
    EXPECT_FALSE(doc->Model().sceneOpen);
    EXPECT_EQ(ReadBytes(Sheet()), sheet);
    Restart(RecoveryAnswer::Recover);
    EXPECT_EQ(Levels(), 2);
    EXPECT_EQ(doc->History().UndoText(), "Undo Add Level");
}

TEST_F(Recovery, WhatOthersHaveChangedIsNeverOverwritten) {
    Begin(1);
    AddLevel("Front");
    doc.reset();
    CScene other;
    ASSERT_TRUE(LoadXSheet(Sheet(), other));
    other.xsheet.SetLevelName(0, "Theirs");
    ASSERT_TRUE(SaveXSheet(Sheet(), other));
    Restart(RecoveryAnswer::Discard);
    const auto request = std::any_cast<CRecoveryRequest>(prompter.lastRequest);
    EXPECT_FALSE(request.fits);
    EXPECT_NE(request.reason.find("S.xsheet"), std::string::npos) << request.reason;
    EXPECT_EQ(doc->Model().Scene(), other);
    EXPECT_FALSE(CanUndo(doc->Model()));
    EXPECT_EQ(ListFiles(journals, ".kept1").size(), 1U) << "the journal is kept";
    EXPECT_EQ(CountJournals(), 1U);
}

TEST_F(Recovery, HistoryGoesOnAfterClosingUnlessTheFilesAreOthers) {
    Begin(1);
    AddLevel("Front");
    static_cast<void>(doc->Saving().SaveAll());
    Restart(std::nullopt);
    EXPECT_EQ(doc->History().UndoText(), "Undo Add Level");
    doc->History().Undo();
    EXPECT_EQ(Levels(), 1);
    static_cast<void>(doc->Saving().SaveAll());
    Restart(std::nullopt);
    doc->History().Redo();
    EXPECT_EQ(Levels(), 2);
    static_cast<void>(doc->Saving().SaveAll());
    doc.reset();
    CScene other;
    ASSERT_TRUE(LoadXSheet(Sheet(), other));
    other.xsheet.SetLevelName(0, "Theirs");
    ASSERT_TRUE(SaveXSheet(Sheet(), other));
    Restart(std::nullopt);
    EXPECT_FALSE(CanUndo(doc->Model()));
    EXPECT_EQ(History().Entries().back().kind, HistoryEntryKind::Break);
    EXPECT_EQ(prompter.statusTexts.back(), "The scene was changed by something else: its history starts anew.");
    EXPECT_EQ(doc->Model().Scene(), other);
}

TEST_F(Recovery, PaintingThatOthersHaveChangedIsPassedBy) {
    Begin(1);
    doc->Scenes().SetFolderName("Fox");
    doc->Assets().EditCel("1");
    ASSERT_TRUE(doc->Painting().Begin(CelTool::Pen, {5, 5}));
    doc->Painting().End({30, 30});
    AddLevel("Front");
    static_cast<void>(doc->Saving().SaveAll());
    const Path file = doc->Model().celImg.FilePath();
    CCelImg theirs;
    ASSERT_TRUE(theirs.CreateCel(50, 50, file) && theirs.Save());
    Restart(std::nullopt);
    doc->History().Undo();
    EXPECT_EQ(Levels(), 1);
    doc->History().Undo();
    const std::vector<std::string> messages = prompter.TakeMessages();
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_TRUE(messages.front().starts_with("\"Fox 1\" has been changed by something else since."));
    CCelImg now;
    ASSERT_TRUE(now.Load(file));
    EXPECT_EQ(now.Width(), 50);
}

TEST_F(Recovery, TheWorkGoesOnWithoutAJournal) {
    WriteBytes(folder / "in the way", std::vector<std::uint8_t>(9, 1));
    journals = folder / "in the way";
    StartDocument();
    NewScene("T");
    ASSERT_EQ(prompter.messages.size(), 1U);
    EXPECT_TRUE(prompter.TakeMessages().front().starts_with("There is no journal: changes that are not saved"));
    AddLevel("Front");
    NewScene("U");
    EXPECT_EQ(prompter.TakeMessages(), std::vector<std::string>()) << "it is told once";
    AddLevel("Front");
    doc->History().Undo();
    EXPECT_EQ(Levels(), 1);
}

TEST_F(Recovery, AJournalThatCannotBeReadIsKeptAndAnotherBegun) {
    Begin(1);
    AddLevel("Front");
    doc.reset();
    const std::vector<std::string> names = ListFiles(journals, ".journal");
    ASSERT_EQ(names.size(), 1U);
    const std::vector<std::uint8_t> damaged(5000, 'x');
    WriteBytes(journals / names.front(), damaged);
    Restart(std::nullopt);
    EXPECT_EQ(Levels(), 1);
    EXPECT_EQ(prompter.TakeMessages().size(), 1U);
    EXPECT_EQ(ReadBytes(journals / (names.front() + ".kept1")), damaged);
    AddLevel("Again");
    Restart(RecoveryAnswer::Recover);
    EXPECT_EQ(Levels(), 2);
}

TEST_F(Recovery, ASecondProgramLeavesTheJournalAlone) {
    Begin(1);
    CScriptedPrompter secondPrompter;
    CProfile secondProfile;
    Set(secondProfile, setting::databaseDir, Get(profile, setting::databaseDir));
    CVelmorltDoc second(secondPrompter, secondProfile, {folder.Path(), folder / "data", {}, journals});
    ASSERT_TRUE(second.Scenes().OpenScene("S"));
    EXPECT_EQ(secondPrompter.messages.size(), 1U);
    AddLevel("Front");
    Restart(RecoveryAnswer::Recover);
    EXPECT_EQ(Levels(), 2);
}

TEST_F(Recovery, ADatabaseThatVanishesCostsNothing) {
    Begin(1);
    const Path aside = folder / "unplugged";
    std::filesystem::rename(Database(), aside);
    AddLevel("Front");
    doc->History().Undo();
    doc->History().Redo();
    prompter.confirmations = {false};
    EXPECT_FALSE(doc->Saving().SaveAll());
    prompter.TakeMessages();
    doc.reset();
    std::filesystem::remove_all(Database());
    std::filesystem::rename(aside, Database());
    Restart(RecoveryAnswer::Recover);
    EXPECT_EQ(Levels(), 2);
}

TEST_F(Recovery, DeletedAssetsComeBackWithTheirCells) {
    Begin(1);
    doc->Scenes().SetFolderName("Fox");
    doc->Scenes().SetSourceSelection({"2"});
    doc->XSheet().DropCels(0, 3, 2, false);
    const CSceneState before = State();
    doc->Assets().DeleteSelected();
    const CHistoryEntry deletion = History().Entries().back();
    EXPECT_EQ(deletion.kind, HistoryEntryKind::Deletion);
    EXPECT_TRUE(deletion.canComeBack);
    EXPECT_NE(State().DifferenceTo(before), "");
    EXPECT_EQ(doc->History().UndoText(), "Undo Drop Cels") << "undo passes it by";
    doc->History().BringBack(deletion.id);
    EXPECT_EQ(State().DifferenceTo(before), "");
    doc->History().Undo();
    EXPECT_FALSE(FileExists(SceneFolder("S") / "Fox" / "2.bit"));
    doc->History().Undo();
    EXPECT_FALSE(doc->Model().Scene().xsheet.Cell(0, 3).IsUsed());
    doc->History().Redo();
    EXPECT_FALSE(doc->Model().Scene().xsheet.Cell(0, 3).IsUsed()) << "its drawing is gone";
}

TEST_F(Recovery, WhatAKilledBatchHadBegunIsTakenBack) {
    Begin(1);
    const Path cel = SceneFolder("S") / "Fox" / "1.bit";
    const auto before = ReadBytes(cel);
    CStepChanges unfinished;
    unfinished.files.push_back({"Fox/1.bit", KeepContents(cel, 1 << 20), nullptr, {}});
    const_cast<CHistory&>(History()).Announce(unfinished, ChangeDirection::Forward);
    WriteBytes(cel, std::vector<std::uint8_t>(50, 1));
    Restart(std::nullopt);
    EXPECT_EQ(ReadBytes(cel), before);
}

} // namespace
} // namespace velmor::testing
