#include "platform/journal/Journal.h"
#include "TempFolder.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <sys/stat.h>

using namespace velmor;
using velmor::testing::CTempFolder;

namespace {

/// What a journal has to hold, kept the plain way.
struct CModel {
    std::map<std::int64_t, CJournalStep> steps;
    std::map<std::int64_t, CJournalMove> moves;
    std::map<std::string, JournalBytes, std::less<>> notes;

    void Apply(const CJournalEntry& entry) {
        for (const CJournalStep& step : entry.put)
            steps[step.id] = step;
        for (const std::int64_t id : entry.remove) {
            steps.erase(id);
            std::erase_if(moves, [id](const auto& move) { return move.second.step == id; });
        }
        for (const CJournalMove& move : entry.moves)
            moves[move.sequence] = move;
        std::erase_if(moves, [&](const auto& move) { return move.first <= entry.forgetMovesTo; });
        for (const auto& [name, value] : entry.notes)
            notes[name] = value;
        std::erase_if(notes, [](const auto& note) { return note.second.empty(); });
    }
};

/// Makes up entries as a session has them: steps come and are replaced, the oldest go.
class CSession {
public:
    CJournalEntry Next() {
        CJournalEntry entry;
        for (std::uint32_t count = Below(3); count > 0; --count)
            entry.put.push_back({Below(4) == 0 ? 1 + Below(60) : ++m_lastStep, Bytes(40), Bytes(30000)});
        for (std::uint32_t count = Below(3); count > 0; --count)
            entry.moves.push_back({++m_lastMove, 1 + Below(m_lastStep + 1), Below(2) == 0});
        if (Below(4) == 0)
            entry.remove = {1 + Below(m_lastStep + 1), 1 + Below(m_lastStep + 1)};
        if (Below(9) == 0)
            entry.forgetMovesTo = Below(m_lastMove + 1);
        for (std::uint32_t count = Below(3); count > 0; --count)
            entry.notes[std::string(1 + Below(3), 'n')] = Bytes(20);
        return entry;
    }

private:
    std::uint32_t Below(std::int64_t limit) {
        return static_cast<std::uint32_t>(m_random()) % static_cast<std::uint32_t>(limit);
    }
    JournalBytes Bytes(std::uint32_t most) {
        JournalBytes bytes(Below(most));
        const std::uint32_t tones = 1 + Below(200); // from flat to noise
        std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<std::uint8_t>(Below(tones)); });
        return bytes;
    }

    std::mt19937 m_random{20260112};
    std::int64_t m_lastStep = 0;
    std::int64_t m_lastMove = 0;
};

void ExpectSame(const CModel& model, const CJournalContents& contents, CJournal& journal) {
    ASSERT_EQ(contents.steps.size(), model.steps.size());
    auto found = contents.steps.begin();
    for (const auto& [id, step] : model.steps) {
        EXPECT_EQ(found->id, id);
        EXPECT_EQ(found->heading, step.heading);
        EXPECT_EQ(found->bytes, journal.StoredBytes(id));
        EXPECT_EQ(journal.ReadBody(id), step.body);
        ++found;
    }
    const auto same = [](const CJournalMove& move, const auto& expected) {
        return move.sequence == expected.first && move.step == expected.second.step &&
               move.forward == expected.second.forward;
    };
    EXPECT_TRUE(
        std::equal(contents.moves.begin(), contents.moves.end(), model.moves.begin(), model.moves.end(), same));
    EXPECT_EQ(contents.notes, model.notes);
}

} // namespace

TEST(Journal, HoldsWhatWasWritten) {
    const CTempFolder folder;
    const Path file = folder / "new" / "folders" / "scene.journal";
    CSession session;
    CModel model;
    for (int opening = 0; opening < 6; ++opening) {
        std::unique_ptr<CJournal> journal;
        CJournalContents contents;
        const CStatus opened = CJournal::Open(file, journal, contents);
        ASSERT_TRUE(opened) << opened.Message();
        ExpectSame(model, contents, *journal);
        for (int written = 0; written < 60; ++written) {
            const CJournalEntry entry = session.Next();
            model.Apply(entry);
            journal->Write(entry);
            if (written % 20 == 0 && !model.steps.empty()) {
                EXPECT_EQ(journal->ReadBody(model.steps.rbegin()->first), model.steps.rbegin()->second.body);
                EXPECT_EQ(journal->ReadBody(1000000), std::nullopt);
                EXPECT_EQ(journal->StoredBytes(1000000), 0U);
            }
        }
        EXPECT_TRUE(journal->Fault()) << journal->Fault().Message();
    }
    namespace fs = std::filesystem;
    EXPECT_EQ(fs::status(file).permissions(), fs::perms{0600});
    EXPECT_EQ(fs::status(file.parent_path()).permissions(), fs::perms{0700});
    EXPECT_EQ(ListFiles(file.parent_path(), ""), std::vector<std::string>{"scene.journal"});
}
