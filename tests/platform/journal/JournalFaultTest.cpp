// What becomes of a journal when the process dies, or the disk takes no more.

#include "TempFolder.h"
#include "platform/journal/Journal.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <gtest/gtest.h>
#include <random>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace velmor;
using velmor::testing::CTempFolder;

namespace {

JournalBytes BodyOf(std::int64_t step) {
    std::mt19937 random(static_cast<std::uint32_t>(step));
    JournalBytes body(random() % 4 == 0 ? 400000 : random() % 3000);
    std::generate(body.begin(), body.end(), [&] { return static_cast<std::uint8_t>(random()); });
    return body;
}

JournalBytes HeadingOf(std::int64_t step) {
    return {static_cast<std::uint8_t>(step), static_cast<std::uint8_t>(step >> 8)};
}

/// The entry of a number adds two steps and a move, takes a step away, and notes which entry it is.
CJournalEntry EntryOf(std::int64_t number) {
    CJournalEntry entry;
    for (const std::int64_t step : {number * 2 - 1, number * 2})
        entry.put.push_back({step, HeadingOf(step), BodyOf(step)});
    entry.remove = {number * 2 - 81};
    entry.moves = {{number, number * 2, true}};
    entry.notes = {{"last", HeadingOf(number)}};
    return entry;
}

/// How many entries a journal holds, all of them whole.
std::int64_t ExpectWhole(const CJournalContents& contents, CJournal& journal) {
    const std::int64_t last = contents.moves.empty() ? 0 : contents.moves.back().sequence;
    std::vector<std::int64_t> steps;
    for (std::int64_t step = 1; step <= last * 2; ++step)
        if (step % 2 == 0 || step > last * 2 - 81)
            steps.push_back(step);
    EXPECT_TRUE(std::equal(steps.begin(), steps.end(), contents.steps.begin(), contents.steps.end(),
                           [](std::int64_t step, const auto& found) { return found.id == step; }));
    EXPECT_EQ(contents.moves.size(), static_cast<std::size_t>(last));
    if (last > 0) {
        EXPECT_EQ(contents.notes, (decltype(contents.notes){{"last", HeadingOf(last)}}));
    }
    for (const CJournalContents::CHeading& step : contents.steps) {
        EXPECT_EQ(step.heading, HeadingOf(step.id));
        if (step.id > last * 2 - 20) {
            EXPECT_TRUE(journal.ReadBody(step.id) == BodyOf(step.id)) << step.id;
        }
    }
    return last;
}

// Tells the number of each entry that is written, until killed.
[[noreturn]] void WriteEntries(const Path& file, int pipe) {
    std::unique_ptr<CJournal> journal;
    CJournalContents contents;
    if (!CJournal::Open(file, journal, contents))
        ::_exit(1);
    std::int64_t number = contents.moves.empty() ? 0 : contents.moves.back().sequence;
    while (true) {
        journal->Write(EntryOf(++number));
        if (number % 3 == 0)
            continue;
        journal->WaitUntilWritten();
        if (::write(pipe, &number, sizeof number) != sizeof number)
            ::_exit(2);
    }
}

std::int64_t LastNumberFrom(int pipe, std::int64_t last) {
    for (std::int64_t number = 0; ::read(pipe, &number, sizeof number) == sizeof number;)
        last = number;
    return last;
}

} // namespace

TEST(JournalFault, AKilledProcessLosesNothingThatWasWritten) {
    const CTempFolder folder;
    const Path file = folder / "journal";
    std::mt19937 random(7);
    std::int64_t last = 0;
    for (int round = 0; round < 40; ++round) {
        std::array<int, 2> pipe{};
        ASSERT_EQ(::pipe(pipe.data()), 0);
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0)
            WriteEntries(file, pipe[1]);
        ::close(pipe[1]);
        std::int64_t first = 0;
        EXPECT_EQ(::read(pipe[0], &first, sizeof first), static_cast<ssize_t>(sizeof first));
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 20000));
        std::unique_ptr<CJournal> journal;
        CJournalContents contents;
        EXPECT_EQ(CJournal::Open(file, journal, contents).Message(),
                  "The journal is used by another program.\n" + file.string());
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        const std::int64_t told = LastNumberFrom(pipe[0], first);
        ::close(pipe[0]);

        const CStatus opened = CJournal::Open(file, journal, contents);
        ASSERT_TRUE(opened) << opened.Message();
        EXPECT_GT(told, last);
        last = ExpectWhole(contents, *journal);
        EXPECT_GE(last, told);
    }
}

TEST(JournalFault, OneOpenerAtATime) {
    const CTempFolder folder;
    std::unique_ptr<CJournal> first, second;
    CJournalContents contents;
    ASSERT_TRUE(CJournal::Open(folder / "journal", first, contents));
    for (int attempt = 0; attempt < 3; ++attempt) {
        EXPECT_FALSE(CJournal::Open(folder / "journal", second, contents));
        EXPECT_FALSE(second);
        first->Write(EntryOf(attempt + 1));
        first->WaitUntilWritten();
    }
    first.reset();
    ASSERT_TRUE(CJournal::Open(folder / "journal", second, contents));
    EXPECT_EQ(ExpectWhole(contents, *second), 3);
}

TEST(JournalFault, AFullDiskEndsItAndLosesNothingThatWasWritten) {
    // The first limit is met by what is written ahead, the second one by the file itself.
    for (const rlim_t limit : {rlim_t{2000000}, rlim_t{20000000}}) {
        const CTempFolder folder;
        const Path file = folder / "journal";
        std::array<int, 2> pipe{};
        ASSERT_EQ(::pipe(pipe.data()), 0);
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            const rlimit limits{limit, limit};
            std::signal(SIGXFSZ, SIG_IGN);
            std::unique_ptr<CJournal> journal;
            CJournalContents contents;
            if (::setrlimit(RLIMIT_FSIZE, &limits) != 0 || !CJournal::Open(file, journal, contents))
                ::_exit(1);
            std::int64_t number = 0;
            for (; journal->Fault() && number < 500; journal->WaitUntilWritten()) {
                if (::write(pipe[1], &number, sizeof number) != sizeof number)
                    ::_exit(2);
                journal->Write(EntryOf(++number));
            }
            const std::string text = journal->Fault().Message();
            for (int more = 0; more < 20; ++more)
                journal->Write(EntryOf(++number));
            journal->WaitUntilWritten();
            const bool told = text == "The journal could not be written: File too large.\n" + file.string() &&
                              journal->Fault().Message() == text;
            const bool reads = journal->ReadBody(2) == BodyOf(2) && !journal->ReadBody(number * 2) &&
                               journal->StoredBytes(2) > 0 && journal->StoredBytes(number * 2) == 0;
            journal.reset();
            ::_exit(!told ? 3 : !reads ? 4 : 0);
        }
        ::close(pipe[1]);
        const std::int64_t told = LastNumberFrom(pipe[0], 0);
        ::close(pipe[0]);
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_EQ(WEXITSTATUS(status), 0);
        std::unique_ptr<CJournal> journal;
        CJournalContents contents;
        const CStatus opened = CJournal::Open(file, journal, contents);
        ASSERT_TRUE(opened) << opened.Message();
        EXPECT_GT(told, 0);
        EXPECT_GE(ExpectWhole(contents, *journal), told);
    }
}

TEST(JournalFault, WhereNothingCanBeWrittenNothingIsOpened) {
    const CTempFolder folder;
    velmor::testing::WriteBytes(folder / "file", JournalBytes{1});
    std::unique_ptr<CJournal> journal;
    CJournalContents contents;
    for (const Path& file : {folder / "file" / "journal", Path("/proc/journals/journal"), Path("/proc/journal")}) {
        const CStatus opened = CJournal::Open(file, journal, contents);
        EXPECT_FALSE(opened);
        EXPECT_NE(opened.Message().find(file.string()), std::string::npos) << opened.Message();
    }
    if (::geteuid() == 0)
        GTEST_SKIP() << "root may write everywhere";
    ASSERT_TRUE(CJournal::Open(folder / "closed" / "journal", journal, contents));
    journal.reset();
    std::filesystem::permissions(folder / "closed", std::filesystem::perms{0500});
    EXPECT_FALSE(CJournal::Open(folder / "closed" / "journal", journal, contents));
    EXPECT_FALSE(CJournal::Open(folder / "closed" / "other", journal, contents));
    std::filesystem::permissions(folder / "closed", std::filesystem::perms{0700});
}
