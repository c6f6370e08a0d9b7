#include "platform/journal/Journal.h"
#include "JournalSession.h"
#include "TempFolder.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

using namespace velmor;
using velmor::testing::CJournalModel;
using velmor::testing::CJournalSession;
using velmor::testing::CTempFolder;

namespace {

void ExpectSame(const CJournalModel& model, const CJournalContents& contents, CJournal& journal) {
    EXPECT_TRUE(model.Lists(contents));
    for (const auto& [id, step] : model.steps)
        EXPECT_EQ(journal.ReadBody(id), step.body);
    for (const CJournalContents::CHeading& step : contents.steps)
        EXPECT_EQ(step.bytes, journal.StoredBytes(step.id));
}

/// Entries that cannot be compressed, each with the one step that takes the place of the one before the last.
CJournalEntry Noise(std::int64_t id, std::size_t bytes) {
    std::mt19937 random(static_cast<std::uint32_t>(id));
    CJournalEntry entry{{{id, {1}, JournalBytes(bytes)}}, {id - 2}, {{id, id, true}}, 0, {}};
    std::generate(entry.put[0].body.begin(), entry.put[0].body.end(),
                  [&] { return static_cast<std::uint8_t>(random()); });
    return entry;
}

} // namespace

TEST(Journal, HoldsWhatWasWritten) {
    const CTempFolder folder;
    const Path file = folder / "new" / "folders" / "scene.journal";
    CJournalSession session(30000);
    CJournalModel model;
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

TEST(Journal, ReusesTheRoomOfWhatWasRemoved) {
    const CTempFolder folder;
    const Path file = folder / "journal";
    std::unique_ptr<CJournal> journal;
    CJournalContents contents;
    ASSERT_TRUE(CJournal::Open(file, journal, contents));
    constexpr std::size_t megabyte = 1 << 20;
    std::uint64_t largestAhead = 0;
    for (std::int64_t id = 1; id <= 60; ++id) {
        journal->Write(Noise(id, megabyte));
        journal->WaitUntilWritten();
        largestAhead = std::max(largestAhead, std::filesystem::file_size(file.string() + "-wal"));
    }
    EXPECT_EQ(journal->ReadBody(58), std::nullopt);
    EXPECT_EQ(journal->ReadBody(59), Noise(59, megabyte).put[0].body);
    journal.reset();
    EXPECT_LT(largestAhead, 20 * megabyte);
    EXPECT_LT(std::filesystem::file_size(file), 6 * megabyte);
}

TEST(Journal, MayLieBehindALink) {
    const CTempFolder folder;
    ASSERT_TRUE(CreateFolder(folder / "elsewhere"));
    std::filesystem::create_symlink("elsewhere", folder / "link");
    std::filesystem::create_symlink("elsewhere/journal", folder / "journal");
    std::unique_ptr<CJournal> journal, second;
    CJournalContents contents;
    ASSERT_TRUE(CJournal::Open(folder / "link" / "journal", journal, contents));
    journal->Write(Noise(5, 1000));
    journal->WaitUntilWritten();
    EXPECT_FALSE(CJournal::Open(folder / "journal", second, contents));
    journal.reset();
    const CStatus opened = CJournal::Open(folder / "journal", second, contents);
    ASSERT_TRUE(opened) << opened.Message();
    EXPECT_EQ(second->ReadBody(5), Noise(5, 1000).put[0].body);
}
