#include "platform/files/SystemPaths.h"
#include "TempFolder.h"

#include <cstdlib>
#include <gtest/gtest.h>

using namespace velmor;
using velmor::testing::CTempFolder;
using velmor::testing::WriteBytes;

TEST(SystemPaths, FollowTheEnvironmentOnlyWhereItNamesAFullPath) {
    ::setenv("HOME", "/homes/ann", 1);
    ::setenv("XDG_CONFIG_HOME", "/settings", 1);
    ::unsetenv("XDG_DATA_HOME");
    EXPECT_EQ(UserConfigurationFolder(), "/settings");
    EXPECT_EQ(UserDataFolder(), "/homes/ann/.local/share");
    ::setenv("XDG_CONFIG_HOME", "relative", 1);
    ::setenv("XDG_DATA_HOME", "", 1);
    EXPECT_EQ(UserConfigurationFolder(), "/homes/ann/.config");
    EXPECT_EQ(UserDataFolder(), "/homes/ann/.local/share");
    ::unsetenv("HOME");
    EXPECT_TRUE(UserConfigurationFolder().is_absolute());
}

TEST(SystemPaths, KnowTheProgramAndWhatCanBeWritten) {
    EXPECT_TRUE(FileExists(ProgramFolder() / "test_platform"));
    const CTempFolder folder;
    WriteBytes(folder / "file", {});
    EXPECT_TRUE(FolderIsWritable(folder.Path()));
    EXPECT_TRUE(FolderIsWritable(folder / "not" / "yet" / "there"));
    EXPECT_FALSE(FolderIsWritable(folder / "file"));
    EXPECT_FALSE(FolderIsWritable("/proc/sys"));
}
