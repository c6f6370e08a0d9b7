#include "platform/files/ClaimedFile.h"

#include "TempFolder.h"
#include "platform/files/AtomicFile.h"

#include <array>
#include <chrono>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace velmor;
using velmor::testing::CTempFolder;
using velmor::testing::ReadBytes;
using velmor::testing::WriteBytes;

namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<std::uint8_t>;

const Bytes someBytes = {1, 2, 3};
const std::string otherMachine = ".velmor-0badcafe-";
const std::string number = "0123456789abcdef";

/// Another process that makes a file and a folder and then waits, or dies as if it were killed.
class CMaker {
public:
    explicit CMaker(const Path& folder) {
        EXPECT_EQ(::pipe(m_toMaker.data()), 0);
        EXPECT_EQ(::pipe(m_fromMaker.data()), 0);
        m_process = ::fork();
        if (m_process == 0)
            Make(folder);
        char isReady = 0;
        EXPECT_EQ(::read(m_fromMaker[0], &isReady, 1), 1);
    }
    CMaker(const CMaker&) = delete;
    CMaker& operator=(const CMaker&) = delete;
    ~CMaker() {
        for (const int end : {m_toMaker[0], m_toMaker[1], m_fromMaker[0], m_fromMaker[1]})
            ::close(end);
    }

    void Kill() {
        ::kill(m_process, SIGKILL);
        ::waitpid(m_process, nullptr, 0);
    }
    /// Has it finish its file; whether it could.
    bool Finish() {
        int status = 0;
        return ::write(m_toMaker[1], "x", 1) == 1 && ::waitpid(m_process, &status, 0) == m_process &&
               WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }

private:
    [[noreturn]] void Make(const Path& folder) {
        char word = 0;
        std::optional<CAtomicFile> file = CAtomicFile::Create(folder / "made");
        const std::optional<CClaimedFolder> claimed = CClaimedFolder::Make(folder);
        const bool made = file && claimed && file->Append(someBytes) && CreateFolder(claimed->File("inner")) &&
                          WriteFileAtomically(claimed->File("inner/file"), someBytes);
        const bool told = ::write(m_fromMaker[1], "x", 1) == 1 && ::read(m_toMaker[0], &word, 1) == 1;
        ::_exit(made && told && FileExists(claimed->File("inner/file")) && file->Commit() ? 0 : 1);
    }

    std::array<int, 2> m_toMaker{};
    std::array<int, 2> m_fromMaker{};
    pid_t m_process = -1;
};

std::ptrdiff_t CountIn(const Path& folder) {
    return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
}

void Age(const Path& path, std::chrono::hours age) {
    fs::last_write_time(path, fs::file_time_type::clock::now() - age);
}

} // namespace

TEST(ClaimedFile, WhatAKilledProcessMadeGoesAndWhatLivingOnesMakeStays) {
    const CTempFolder folder;
    std::optional<CAtomicFile> own = CAtomicFile::Create(folder / "own");
    const std::optional<CClaimedFolder> ownFolder = CClaimedFolder::Make(folder.Path());
    ASSERT_TRUE(own && own->Append(someBytes) && ownFolder);
    CMaker living(folder.Path());
    CMaker killed(folder.Path());
    ASSERT_EQ(CountIn(folder.Path()), 9);
    killed.Kill();
    ASSERT_EQ(CountIn(folder.Path()), 9) << "nothing could clear up";
    RemoveAbandoned(folder.Path());
    EXPECT_EQ(CountIn(folder.Path()), 6);
    EXPECT_TRUE(living.Finish());
    EXPECT_TRUE(own->Commit());
    EXPECT_EQ(ReadBytes(folder / "made"), someBytes);
    EXPECT_EQ(ReadBytes(folder / "own"), someBytes);
    EXPECT_TRUE(FolderExists(ownFolder->Name()));
    RemoveAbandoned(folder.Path());
    EXPECT_EQ(CountIn(folder.Path()), 4) << "two files, and the folder of this process";
}

TEST(ClaimedFile, NamesAreHiddenAndTellNothing) {
    const CTempFolder folder;
    const auto first = CAtomicFile::Create(folder / "Fox.bit");
    const auto second = CAtomicFile::Create(folder / "Fox.bit");
    ASSERT_TRUE(first && second);
    EXPECT_NE(first->Temporary(), second->Temporary());
    for (const auto& file : {first->Temporary(), second->Temporary()}) {
        const std::string name = file.filename().string();
        EXPECT_TRUE(name.starts_with(".velmor-") && name.ends_with(".tmp")) << name;
    }
    std::optional<CClaimedFolder> claimed = CClaimedFolder::Make(folder.Path());
    ASSERT_TRUE(claimed);
    EXPECT_EQ(fs::status(claimed->Name()).permissions(), fs::perms::owner_all);
    claimed.reset();
    EXPECT_EQ(CountIn(folder.Path()), 2);
}

TEST(ClaimedFile, OnlyWhatIsCertainlyAbandonedGoes) {
    const CTempFolder folder;
    using namespace std::chrono_literals;
    const auto make = [&](const std::string& name, std::chrono::hours age) {
        WriteBytes(folder / name, someBytes);
        Age(folder / name, age);
    };
    make("Fox.bit", 1000h);
    make("Fox.bit.123-4.tmp", 1000h);
    make(".velmor-notes.tmp", 1000h);
    make(".velmor-0badcafe-0123456789abcdeg.tmp", 1000h);
    make(".velmor-00000000-" + number + ".tmp", 1000h); // made where there were no locks
    make(otherMachine + number + ".tmp", 23h);          // may still be at work on a share without common locks
    ASSERT_EQ(::mkfifo((folder / (otherMachine + "1" + number.substr(1) + ".tmp")).c_str(), 0600), 0);
    fs::create_symlink("Fox.bit", folder / (otherMachine + "2" + number.substr(1) + ".tmp"));
    fs::create_directory_symlink(".", folder / (otherMachine + "3" + number.substr(1) + ".files"));
    const std::ptrdiff_t staying = CountIn(folder.Path());

    make(otherMachine + "4" + number.substr(1) + ".tmp", 25h);
    make(otherMachine + "5" + number.substr(1) + ".tmp", 25h);
    const Path half = folder / (otherMachine + "5" + number.substr(1) + ".files");
    ASSERT_TRUE(CreateFolder(half / "Fox"));
    WriteBytes(half / "Fox" / "1.bit", someBytes);
    RemoveAbandoned(folder.Path());
    EXPECT_EQ(CountIn(folder.Path()), staying);
    EXPECT_FALSE(FolderExists(half));
    RemoveAbandoned(folder / "missing");
}

TEST(ClaimedFile, AFolderWhoseFileIsGoneIsRecognized) {
    const CTempFolder folder;
    CMaker killed(folder.Path());
    killed.Kill();
    for (const std::string& name : ListFiles(folder.Path(), ".tmp"))
        fs::remove(folder / name); // as an interrupt does
    ASSERT_EQ(CountIn(folder.Path()), 1);
    RemoveAbandoned(folder.Path());
    EXPECT_EQ(CountIn(folder.Path()), 0);
}

TEST(ClaimedFile, AMoveNeverReplaces) {
    const CTempFolder folder;
    ASSERT_TRUE(CreateFolder(folder / "a" / "inner") && CreateFolder(folder / "b"));
    EXPECT_FALSE(MoveIfAbsent(folder / "a", folder / "b"));
    EXPECT_TRUE(MoveIfAbsent(folder / "a", folder / "c"));
    EXPECT_TRUE(FolderExists(folder / "c" / "inner"));
}
