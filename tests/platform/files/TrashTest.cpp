#include "platform/files/Trash.h"

#include "TempFolder.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace velmor;
using velmor::testing::CTempFolder;
using velmor::testing::ReadBytes;
using velmor::testing::WriteBytes;

namespace {

class TrashTest : public ::testing::Test {
protected:
    Path MakeFile(const Path& path, char contents) {
        static_cast<void>(CreateFolder(path.parent_path()));
        WriteBytes(path, std::vector{static_cast<std::uint8_t>(contents)});
        return path;
    }
    std::string Contents(const Path& path) {
        const std::vector<std::uint8_t> bytes = ReadBytes(path);
        return {bytes.begin(), bytes.end()};
    }

    CTempFolder folder;
    Path trashFolder = folder / "data" / "Trash";
    CTrash trash{trashFolder};
};

} // namespace

TEST_F(TrashTest, KeepsWhatItTakesWithANoteOfWhereItWas) {
    const Path file = MakeFile(folder / "B\xc3\xa4r 100%.scene" / "7.bit", 'a');
    ASSERT_TRUE(trash.Take(file));
    EXPECT_FALSE(FileExists(file));
    EXPECT_EQ(Contents(trashFolder / "files" / "7.bit"), "a");
    const std::string note = Contents(trashFolder / "info" / "7.bit.trashinfo");
    const std::string start =
        "[Trash Info]\nPath=" + folder.Path().string() + "/B%C3%A4r%20100%25.scene/7.bit\nDeletionDate=";
    ASSERT_EQ(note.substr(0, start.size()), start);
    int year = 0, second = 0;
    EXPECT_EQ(std::sscanf(note.c_str() + start.size(), "%4d-%*2d-%*2dT%*2d:%*2d:%2d\n", &year, &second), 2) << note;
    EXPECT_GE(year, 2024);
    struct stat info {};
    ASSERT_EQ(::stat(trashFolder.c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0700U);
}

TEST_F(TrashTest, NothingInItIsReplaced) {
    const Path file = folder / "7.bit";
    ASSERT_TRUE(trash.Take(MakeFile(file, 'a')));
    ASSERT_TRUE(trash.Take(MakeFile(file, 'b')));
    MakeFile(trashFolder / "files" / "7 3.bit", 'x'); // without its note
    ASSERT_TRUE(trash.Take(MakeFile(file, 'c')));
    EXPECT_EQ(Contents(trashFolder / "files" / "7.bit") + Contents(trashFolder / "files" / "7 2.bit") +
                  Contents(trashFolder / "files" / "7 3.bit") + Contents(trashFolder / "files" / "7 4.bit"),
              "abxc");
    EXPECT_EQ(ListFiles(trashFolder / "info", ""),
              (std::vector<std::string>{"7 2.bit.trashinfo", "7 4.bit.trashinfo", "7.bit.trashinfo"}));
}

TEST_F(TrashTest, TakesFoldersWholeAndLinksAsTheyAre) {
    MakeFile(folder / "Cat" / "inner" / "1.bit", 'a');
    ASSERT_TRUE(trash.Take(folder / "Cat"));
    EXPECT_EQ(Contents(trashFolder / "files" / "Cat" / "inner" / "1.bit"), "a");
    const Path elsewhere = MakeFile(folder / "elsewhere", 'b');
    std::filesystem::create_symlink(elsewhere, folder / "link.bit");
    ASSERT_TRUE(trash.Take(folder / "link.bit"));
    EXPECT_TRUE(FileExists(elsewhere));
    EXPECT_TRUE(std::filesystem::is_symlink(trashFolder / "files" / "link.bit"));
}

TEST_F(TrashTest, WhatItCannotTakeStays) {
    const Path file = MakeFile(folder / "7.bit", 'a');
    EXPECT_FALSE(CTrash().Take(file));
    EXPECT_FALSE(CTrash(file / "Trash").Take(file));
    EXPECT_FALSE(trash.Take(folder / "missing"));
    EXPECT_FALSE(FolderExists(trashFolder));
    EXPECT_FALSE(CTrash(folder / "Cat" / "Trash").Take(MakeFile(folder / "Cat" / "1", 'b').parent_path()))
        << "a folder cannot be moved into itself";
    EXPECT_TRUE(ListFiles(folder / "Cat" / "Trash" / "info", "").empty());
    EXPECT_TRUE(FileExists(file) && FileExists(folder / "Cat" / "1"));
}

TEST_F(TrashTest, IsTheUsersWhereADesktopHasOne) {
    ::setenv("XDG_DATA_HOME", (folder / "data").c_str(), 1);
    ::unsetenv("XDG_CURRENT_DESKTOP");
    ::unsetenv("DESKTOP_SESSION");
    const Path file = MakeFile(folder / "7.bit", 'a');
    EXPECT_FALSE(CTrash::OfThisUser().Take(file)) << "nobody would see it there";
    ::setenv("XDG_CURRENT_DESKTOP", "XFCE", 1);
    EXPECT_TRUE(CTrash::OfThisUser().Take(file));
    ::unsetenv("XDG_CURRENT_DESKTOP");
    EXPECT_TRUE(CTrash::OfThisUser().Take(MakeFile(file, 'b')));
    ::unsetenv("XDG_DATA_HOME");
}
