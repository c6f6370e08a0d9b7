#include "platform/files/Files.h"
#include "TempFolder.h"
#include "platform/files/AtomicFile.h"
#include "platform/process/Interrupt.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace velmor;
using velmor::testing::CTempFolder;
using velmor::testing::ReadBytes;
using velmor::testing::WriteBytes;

namespace {

using Bytes = std::vector<std::uint8_t>;

const Bytes oldBytes = {'o', 'l', 'd'};
const Bytes newBytes = {'n', 'e', 'w', 0, 255};

} // namespace

TEST(Files, AWholeFileReplacesTheOldOne) {
    const CTempFolder folder;
    WriteBytes(folder / "a.bit", oldBytes);
    ::chmod((folder / "a.bit").c_str(), 0640);
    ASSERT_TRUE(WriteFileAtomically(folder / "a.bit", newBytes));
    ASSERT_TRUE(WriteFileAtomically(folder / "empty", {}));
    EXPECT_EQ(ReadBytes(folder / "a.bit"), newBytes);
    EXPECT_EQ(std::filesystem::status(folder / "a.bit").permissions(), std::filesystem::perms{0640});
    EXPECT_EQ(ListFiles(folder.Path(), ""), (std::vector<std::string>{"a.bit", "empty"}));
}

TEST(Files, AFailedWriteLeavesEverythingAsItWas) {
    const CTempFolder folder;
    EXPECT_FALSE(WriteFileAtomically(folder / "missing" / "a", newBytes));
    ASSERT_TRUE(CreateFolder(folder / "taken"));
    EXPECT_FALSE(WriteFileAtomically(folder / "taken", newBytes));
    // The target becomes a folder while the file is being written: the renaming fails.
    std::optional<CAtomicFile> file = CAtomicFile::Create(folder / "late");
    ASSERT_TRUE(file && file->Append(newBytes) && CreateFolder(folder / "late"));
    EXPECT_FALSE(file->Commit());
    EXPECT_FALSE(file->Append(newBytes));
    EXPECT_TRUE(ListFiles(folder.Path(), "").empty());
}

TEST(Files, WritesWhereALinkLeadsAndKeepsTheLink) {
    namespace fs = std::filesystem;
    const CTempFolder folder;
    ASSERT_TRUE(CreateFolder(folder / "links") && CreateFolder(folder / "files"));
    WriteBytes(folder / "files" / "old", oldBytes);
    ::chmod((folder / "files" / "old").c_str(), 0640);
    fs::create_symlink("../files/old", folder / "links" / "relative");
    fs::create_symlink(folder / "links" / "relative", folder / "chain");
    fs::create_symlink("files/fresh", folder / "dangling");
    fs::create_directory_symlink("files", folder / "shelf");

    ASSERT_TRUE(WriteFileAtomically(folder / "chain", newBytes));
    EXPECT_EQ(ReadBytes(folder / "files" / "old"), newBytes);
    EXPECT_EQ(fs::status(folder / "files" / "old").permissions(), fs::perms{0640});
    ASSERT_TRUE(WriteFileAtomically(folder / "dangling", newBytes));
    EXPECT_EQ(ReadBytes(folder / "files" / "fresh"), newBytes);
    ASSERT_TRUE(WriteFileAtomically(folder / "shelf" / "other", newBytes));
    EXPECT_EQ(ListFiles(folder / "files", ""), (std::vector<std::string>{"fresh", "old", "other"}));
    for (const char* link : {"chain", "links/relative", "dangling"})
        EXPECT_TRUE(fs::is_symlink(folder / link)) << link;
    EXPECT_EQ(ListFiles(folder.Path(), ".tmp").size() + ListFiles(folder / "links", ".tmp").size(), 0U);
}

TEST(Files, WhatIsNoFileIsNeverReplaced) {
    namespace fs = std::filesystem;
    const CTempFolder folder;
    fs::create_symlink("two", folder / "one");
    fs::create_symlink("one", folder / "two");
    fs::create_symlink("missing/file", folder / "nowhere");
    fs::create_symlink(".", folder / "here");
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    for (const char* name : {"one", "nowhere", "here", "pipe"}) {
        EXPECT_FALSE(WriteFileAtomically(folder / name, newBytes)) << name;
        EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path()), fs::directory_iterator()), 5) << name;
    }
    EXPECT_TRUE(fs::is_symlink(folder / "one") && fs::is_fifo(folder / "pipe"));
}

TEST(Files, AFileIsSeenOnlyWhenItIsComplete) {
    const CTempFolder folder;
    WriteBytes(folder / "movie.avi", oldBytes);
    {
        std::optional<CAtomicFile> dropped = CAtomicFile::Create(folder / "movie.avi");
        ASSERT_TRUE(dropped && dropped->Append(newBytes));
        EXPECT_EQ(ReadBytes(folder / "movie.avi"), oldBytes);
        EXPECT_TRUE(ListFiles(folder.Path(), ".avi") == std::vector<std::string>{"movie.avi"});
    }
    EXPECT_EQ(ReadBytes(folder / "movie.avi"), oldBytes);
    EXPECT_EQ(ListFiles(folder.Path(), "").size(), 1U);

    std::optional<CAtomicFile> kept = CAtomicFile::Create(folder / "movie.avi");
    ASSERT_TRUE(kept && kept->Append(newBytes));
    EXPECT_TRUE(kept->Overwrite(1, oldBytes));
    EXPECT_FALSE(kept->Overwrite(3, oldBytes)) << "past the end";
    EXPECT_EQ(kept->Size(), newBytes.size());
    CAtomicFile moved = std::move(*kept);
    kept.reset();
    ASSERT_TRUE(moved.Commit());
    EXPECT_EQ(ReadBytes(folder / "movie.avi"), (Bytes{'n', 'o', 'l', 'd', 255}));
    EXPECT_EQ(ListFiles(folder.Path(), "").size(), 1U);
}

TEST(Files, AnInterruptedProgramLeavesNoUnfinishedFile) {
    for (const int signal : {SIGINT, SIGTERM}) {
        const CTempFolder folder;
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            RemoveUnfinishedFilesOnInterrupt();
            std::optional<CAtomicFile> file = CAtomicFile::Create(folder / "out.avi");
            if (!file || !file->Append(newBytes) || ListFiles(folder.Path(), "").size() != 1)
                ::_exit(1);
            std::raise(signal);
            ::_exit(2);
        }
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal) << status;
        EXPECT_TRUE(ListFiles(folder.Path(), "").empty());
    }
}

TEST(Files, ReadsOnlyWholeRegularFilesWithinTheLimit) {
    const CTempFolder folder;
    WriteBytes(folder / "f", newBytes);
    const std::optional<CFileBytes> bytes = ReadWholeFile(folder / "f", newBytes.size());
    ASSERT_TRUE(bytes);
    EXPECT_EQ(Bytes(bytes->Span().begin(), bytes->Span().end()), newBytes);
    EXPECT_FALSE(ReadWholeFile(folder / "f", newBytes.size() - 1));
    EXPECT_FALSE(ReadWholeFile(folder / "missing"));
    EXPECT_FALSE(ReadWholeFile(folder.Path()));
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_FALSE(ReadWholeFile(folder / "pipe")) << "a pipe without a writer must not hold the program up either";
}

TEST(Files, CopiesOverNothing) {
    const CTempFolder folder;
    WriteBytes(folder / "from", newBytes);
    EXPECT_TRUE(CopyFileIfAbsent(folder / "from", folder / "to"));
    EXPECT_EQ(ReadBytes(folder / "to"), newBytes);
    WriteBytes(folder / "from", oldBytes);
    EXPECT_FALSE(CopyFileIfAbsent(folder / "from", folder / "to"));
    EXPECT_EQ(ReadBytes(folder / "to"), newBytes);
    EXPECT_FALSE(CopyFileIfAbsent(folder / "missing", folder / "other"));
    EXPECT_FALSE(FileExists(folder / "other"));
    std::filesystem::create_symlink(folder / "nowhere", folder / "link");
    EXPECT_FALSE(CopyFileIfAbsent(folder / "from", folder / "link"));
}

TEST(Files, ListsAreSortedByBytesAndSelectByExtension) {
    const CTempFolder folder;
    for (const char* name :
         {"b.bit", "a.bit", "B.bit", "10.bit", "9.bit", "\u00E9.bit", "a.bit.tmp", "a.BIT", "bit"})
        WriteBytes(folder / name, oldBytes);
    for (const char* name : {"z.scene", "folder.bit", "_Pictures_"})
        ASSERT_TRUE(CreateFolder(folder / name));
    EXPECT_EQ(ListFiles(folder.Path(), ".bit"),
              (std::vector<std::string>{"10.bit", "9.bit", "B.bit", "a.bit", "b.bit", "\u00E9.bit"}));
    EXPECT_EQ(ListFolders(folder.Path()), (std::vector<std::string>{"_Pictures_", "folder.bit", "z.scene"}));
    EXPECT_TRUE(ListFiles(folder / "missing", "").empty());
}

TEST(Files, TheIdentityTellsARewrittenFile) {
    const CTempFolder folder;
    WriteBytes(folder / "f", oldBytes);
    const auto before = IdentifyFile(folder / "f");
    ASSERT_TRUE(before);
    EXPECT_EQ(IdentifyFile(folder / "f"), before);
    ASSERT_TRUE(WriteFileAtomically(folder / "f", Bytes{'n', 'e', 'w'}));
    EXPECT_NE(IdentifyFile(folder / "f"), before);
    EXPECT_FALSE(IdentifyFile(folder.Path()));
}
