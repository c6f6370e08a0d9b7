// Files that are no journal, or no longer the one that was written.

#include "JournalSession.h"
#include "TempFolder.h"
#include "platform/journal/Journal.h"

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/stat.h>

using namespace velmor;
using velmor::testing::CJournalModel;
using velmor::testing::CJournalSession;
using velmor::testing::CTempFolder;
using velmor::testing::ReadBytes;
using velmor::testing::WriteBytes;

namespace {

constexpr int entryCount = 40;

/// What stands on the disk: the journal, and what SQLite keeps beside it.
struct CFiles {
    JournalBytes journal;
    JournalBytes ahead;

    static Path Ahead(const Path& file) { return file.string() + "-wal"; }
    static CFiles Of(const Path& file) {
        return {ReadBytes(file), FileExists(Ahead(file)) ? ReadBytes(Ahead(file)) : JournalBytes{}};
    }
    void Put(const Path& file) const {
        WriteBytes(file, journal);
        static_cast<void>(RemoveFile(Ahead(file)));
        if (!ahead.empty())
            WriteBytes(Ahead(file), ahead);
    }
    bool operator==(const CFiles&) const = default;
};

/// A journal as it is on the disk while it is open and once it is closed, and what it was meant to hold after each
/// of its entries.
struct CWritten {
    CFiles open, closed;
    std::vector<CJournalModel> models{1};

    explicit CWritten(const Path& file) {
        std::unique_ptr<CJournal> journal;
        CJournalContents contents;
        EXPECT_TRUE(CJournal::Open(file, journal, contents));
        CJournalSession session(400);
        for (int written = 0; written < entryCount; ++written) {
            if (written == entryCount / 2) {
                // What has been written so far moves into the file.
                journal.reset();
                EXPECT_TRUE(CJournal::Open(file, journal, contents));
            }
            const CJournalEntry entry = session.Next();
            models.push_back(models.back());
            models.back().Apply(entry);
            journal->Write(entry);
        }
        journal->WaitUntilWritten();
        open = CFiles::Of(file);
        journal.reset();
        closed = CFiles::Of(file);
    }
};

void Change(JournalBytes& bytes, std::mt19937& random) {
    if (bytes.empty())
        return;
    if (random() % 8 == 0)
        bytes.resize(random() % bytes.size());
    else
        for (auto count = 1 + random() % 3; count > 0; --count)
            bytes[random() % bytes.size()] ^= static_cast<std::uint8_t>(1 + random() % 255);
}

/// Opens damaged files: they are refused and stay as they are, or hold what was written up to some entry, but for
/// bodies that are missing. Returns whether they were refused.
bool ExpectRefusedOrTrue(const Path& file, const CFiles& damaged, const CWritten& written, bool writes) {
    damaged.Put(file);
    std::unique_ptr<CJournal> journal;
    CJournalContents contents;
    const CStatus opened = CJournal::Open(file, journal, contents);
    if (!opened) {
        EXPECT_FALSE(opened.Message().empty());
        EXPECT_EQ(CFiles::Of(file), damaged);
        EXPECT_TRUE(contents.steps.empty() && contents.moves.empty() && contents.notes.empty());
        return true;
    }
    const auto model = std::find_if(written.models.rbegin(), written.models.rend(),
                                    [&](const CJournalModel& candidate) { return candidate.Lists(contents); });
    EXPECT_NE(model, written.models.rend());
    if (model != written.models.rend())
        for (const auto& [id, step] : model->steps) {
            const std::optional<JournalBytes> body = journal->ReadBody(id);
            EXPECT_TRUE(!body || *body == step.body) << id;
        }
    if (!writes)
        return false;
    // What is written into such a file is there or has become a fault.
    journal->Write({{{1000, {1}, JournalBytes(20000, 7)}}, {3, 4, 5}, {{1000, 1000, true}}, 3, {}});
    journal->WaitUntilWritten();
    if (journal->Fault()) {
        EXPECT_GT(journal->StoredBytes(1000), 0U);
    }
    journal.reset();
    static_cast<void>(CJournal::Open(file, journal, contents));
    return false;
}

} // namespace

TEST(JournalDamage, IsNoticedOrDoesNotMatter) {
    const CTempFolder folder;
    const Path file = folder / "journal";
    const CWritten written(file);
    ASSERT_TRUE(written.closed.ahead.empty() && !written.open.ahead.empty());
    EXPECT_FALSE(ExpectRefusedOrTrue(file, written.closed, written, true));
    EXPECT_FALSE(ExpectRefusedOrTrue(file, written.open, written, true));
    std::mt19937 random(99);
    int refused = 0;
    for (int round = 0; round < 300; ++round) {
        CFiles damaged = round % 2 == 0 ? written.closed : written.open;
        Change(round % 4 == 3 ? damaged.ahead : damaged.journal, random);
        refused += ExpectRefusedOrTrue(file, damaged, written, round % 5 == 0) ? 1 : 0;
        if (HasFailure())
            FAIL() << "round " << round;
    }
    EXPECT_GT(refused, 20);
    EXPECT_LT(refused, 250);
}

namespace {

void Execute(const Path& file, const char* statements) {
    sqlite3* connection = nullptr;
    ASSERT_EQ(sqlite3_open(file.c_str(), &connection), SQLITE_OK);
    sqlite3_db_config(connection, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    EXPECT_EQ(sqlite3_exec(connection, statements, nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(connection);
}

void ExpectRefused(const Path& file, const std::string& text) {
    const CFiles before = CFiles::Of(file);
    const std::vector<std::string> names = ListFiles(file.parent_path(), "");
    std::unique_ptr<CJournal> journal;
    CJournalContents contents;
    EXPECT_EQ(CJournal::Open(file, journal, contents).Message(), text + "\n" + file.string());
    EXPECT_EQ(CFiles::Of(file), before);
    EXPECT_EQ(ListFiles(file.parent_path(), ""), names);
}

} // namespace

TEST(JournalDamage, OtherFilesAreLeftAlone) {
    const CTempFolder folder;
    const std::string noJournal = "The file is no journal.";
    for (const char* content : {"x", "SQLite format 3",
                                "A text that is longer than the header of a database, which has "
                                "one hundred bytes, so that all of it is looked at."}) {
        const std::string_view text(content);
        WriteBytes(folder / "text", {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
        ExpectRefused(folder / "text", noJournal);
    }
    Execute(folder / "database", "PRAGMA journal_mode = WAL; CREATE TABLE a(b); INSERT INTO a VALUES(1)");
    ExpectRefused(folder / "database", noJournal);
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    std::unique_ptr<CJournal> journal;
    CJournalContents contents;
    EXPECT_FALSE(CJournal::Open(folder / "pipe", journal, contents));
    EXPECT_FALSE(CJournal::Open(folder.Path(), journal, contents));
    EXPECT_FALSE(CJournal::Open(folder.Path() / "", journal, contents));
    WriteBytes(folder / "empty", {});
    EXPECT_TRUE(CJournal::Open(folder / "empty", journal, contents)) << "which is as good as none";
}

TEST(JournalDamage, OtherVersionsAndTablesAreRefused) {
    const struct {
        const char* change;
        const char* text;
    } cases[] = {
        {"PRAGMA user_version = 2", "The journal is of a newer version of the program."},
        {"PRAGMA application_id = 7", "The journal is damaged."},
        {"CREATE TABLE more(a)", "The journal is damaged."},
        {"CREATE VIEW more AS SELECT * FROM steps", "The journal is damaged."},
        {"CREATE TRIGGER more AFTER INSERT ON steps BEGIN DELETE FROM notes; END", "The journal is damaged."},
        {"DROP INDEX moves_of_step", "The journal is damaged."},
        {"UPDATE notes SET value = x'05'", "The journal is damaged."},
        {"DELETE FROM notes", "The journal is damaged."},
        {"DELETE FROM total", "The journal is damaged."},
    };
    for (const auto& [change, text] : cases) {
        const CTempFolder folder;
        const Path file = folder / "journal";
        std::unique_ptr<CJournal> journal;
        CJournalContents contents;
        ASSERT_TRUE(CJournal::Open(file, journal, contents));
        journal->Write({{}, {}, {}, 0, {{"note", {1, 2, 3}}}});
        journal.reset();
        Execute(file, change);
        ASSERT_TRUE(FileExists(CFiles::Ahead(file))) << "what was changed stands beside the file";
        ASSERT_EQ(::unlink((file.string() + "-shm").c_str()), 0);
        ExpectRefused(file, text);
        Execute(file, "PRAGMA wal_checkpoint(TRUNCATE)");
        ASSERT_EQ(::unlink((file.string() + "-shm").c_str()), 0);
        ASSERT_TRUE(RemoveFile(CFiles::Ahead(file)));
        ExpectRefused(file, std::string_view(change).starts_with("PRAGMA application") ? "The file is no journal."
                                                                                       : text);
    }
}

TEST(JournalDamage, ABodyOfAnotherTimeOrStepIsNone) {
    const CTempFolder folder;
    const Path file = folder / "journal";
    std::unique_ptr<CJournal> journal;
    CJournalContents contents;
    ASSERT_TRUE(CJournal::Open(file, journal, contents));
    const JournalBytes first(300, 1), second(300, 2), third(300, 3);
    journal->Write({{{1, {}, first}, {2, {}, second}, {3, {}, third}}, {}, {}, 0, {}});
    journal.reset();
    Execute(file, "UPDATE bodies SET body = (SELECT body FROM bodies WHERE id = 2) WHERE id = 1;"
                  "DELETE FROM bodies WHERE id = 3");
    ASSERT_TRUE(CJournal::Open(file, journal, contents));
    EXPECT_EQ(contents.steps.size(), 3U);
    EXPECT_EQ(journal->ReadBody(1), std::nullopt);
    EXPECT_EQ(journal->ReadBody(2), second);
    EXPECT_EQ(journal->ReadBody(3), std::nullopt);
    journal->Write({{{3, {}, third}}, {1}, {}, 0, {}});
    EXPECT_EQ(journal->ReadBody(3), third);
    EXPECT_TRUE(journal->Fault()) << journal->Fault().Message();
}
