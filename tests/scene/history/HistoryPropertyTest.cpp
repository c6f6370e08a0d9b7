#include "DocumentFixture.h"
#include "RandomAnimator.h"
#include "scene/Settings.h"

namespace velmor::testing {
namespace {

class HistoryProperty : public CDocumentFixture {
protected:
    void Begin(unsigned seed) {
        StartDocument();
        NewScene("Wild" + std::to_string(seed), 30);
        animator = std::make_unique<CRandomAnimator>(*doc, prompter, seed);
        animator->SetUp();
        prompter.TakeMessages();
    }
    CSceneState State() const { return CSceneState::Of(doc->Model()); }
    const CHistory& History() const { return doc->Model().history; }
    std::int64_t Position() const { return History().NextUndo() != nullptr ? History().NextUndo()->id : 0; }

    /// The states by the step that was the last one done.
    std::map<std::int64_t, CSceneState> ActAtRandom(int commands, bool mayDelete) {
        std::map<std::int64_t, CSceneState> states{{Position(), State()}};
        for (int command = 0; command < commands; ++command) {
            animator->Act(mayDelete);
            const CSceneState now = State();
            const auto [state, isNew] = states.try_emplace(Position(), now);
            if (!isNew && !mayDelete) {
                EXPECT_EQ(state->second.DifferenceTo(now), "") << "changed without a step";
            }
        }
        return states;
    }
    void ExpectState(const std::map<std::int64_t, CSceneState>& states) {
        const auto state = states.find(Position());
        ASSERT_NE(state, states.end());
        ASSERT_EQ(state->second.DifferenceTo(State()), "")
            << "before " << doc->History().RedoText() << ", after " << doc->History().UndoText();
    }

    std::unique_ptr<CRandomAnimator> animator;
};

TEST_F(HistoryProperty, EveryStateComesBackDownAndUp) {
    for (const bool hasJournal : {false, true})
        for (unsigned seed = 1; seed <= 4; ++seed) {
            SCOPED_TRACE(seed);
            journals = hasJournal ? folder / "journals" : Path();
            Begin(seed + (hasJournal ? 10 : 0));
            const std::map<std::int64_t, CSceneState> states = ActAtRandom(150, false);
            EXPECT_GT(states.size(), 50U);
            prompter.TakeMessages();
            const std::int64_t first = states.begin()->first;
            while (Position() > first) {
                doc->History().Undo();
                ExpectState(states);
            }
            while (History().NextRedo() != nullptr) {
                doc->History().Redo();
                ExpectState(states);
            }
            EXPECT_EQ(Position(), states.rbegin()->first);
            EXPECT_EQ(prompter.TakeMessages(), std::vector<std::string>());
        }
}

TEST_F(HistoryProperty, OldStepsGoFirstAndTheOthersStayGood) {
    journals = folder / "journals";
    Set(profile, setting::historyMegabytes, 1);
    Begin(31);
    doc->Assets().EditCel("1");
    const std::int64_t oldest = History().Steps().front().id;
    std::map<std::int64_t, CSceneState> states;
    for (int round = 0; round < 60 && History().Steps().front().id == oldest; ++round) {
        for (auto& [position, state] : ActAtRandom(100, false))
            states[position] = std::move(state);
        static_cast<void>(doc->Saving().SaveAll()); // what is in no file has to stay
    }
    ASSERT_GT(History().Steps().front().id, oldest) << "the first ones are gone";
    const CSceneState last = State();
    while (History().NextUndo() != nullptr) {
        doc->History().Undo();
        if (states.contains(Position()))
            ExpectState(states);
    }
    while (History().NextRedo() != nullptr)
        doc->History().Redo();
    EXPECT_EQ(State().DifferenceTo(last), "");
}

TEST_F(HistoryProperty, WithDeletionsTheLastStateComesBack) {
    journals = folder / "journals";
    for (unsigned seed = 51; seed <= 56; ++seed) {
        SCOPED_TRACE(seed);
        Begin(seed);
        ActAtRandom(120, true);
        const CSceneState last = State();
        while (History().NextUndo() != nullptr)
            doc->History().Undo();
        for (const CHistory::CStep& step : History().Steps())
            EXPECT_TRUE(!step.isDone || step.heading.kind != HistoryEntryKind::Step);
        while (History().NextRedo() != nullptr)
            doc->History().Redo();
        EXPECT_EQ(State().scene, last.scene);
    }
}

} // namespace
} // namespace velmor::testing
