#include "scene/ScenePaths.h"

#include "TempFolder.h"

#include <gtest/gtest.h>

using namespace velmor;
using Names = std::vector<std::string>;

namespace {

class CScenePathsTest : public ::testing::Test {
protected:
    static void MakeFiles(const Path& parent, const Names& names) {
        static_cast<void>(CreateFolder(parent));
        for (const std::string& name : names)
            velmor::testing::WriteBytes(parent / name, {});
    }

    /// The cels of a folder, "shown=title".
    std::string Listed(const std::string& cels) {
        std::string listed;
        for (const CListedAsset& cel : ListAssets(paths, SourceMode::Cels, cels))
            listed += (listed.empty() ? "" : " ") + cel.shown + "=" + cel.title;
        return listed;
    }

    velmor::testing::CTempFolder folder;
    CScenePaths paths{WithSeparator(folder.Path().string()), "Test"};
};

} // namespace

TEST_F(CScenePathsTest, ListsScenesAndCelFolders) {
    for (const char* name : {".scene", "B c.scene", "other"})
        static_cast<void>(CreateFolder(folder / name));
    for (const char* name : {"_Pictures_", "_Sounds_", "Run 2", "my_folder", "Walk"})
        static_cast<void>(CreateFolder(folder / "Test.scene" / name));
    MakeFiles(folder.Path(), {"file.scene"});
    MakeFiles(folder / "Test.scene", {"NoFolder"});
    EXPECT_EQ((Names{"B c", "Test"}), ListScenes(WithSeparator(folder.Path().string())));
    EXPECT_EQ((Names{"Run 2", "Walk"}), ListCelFolders(paths));
}

TEST_F(CScenePathsTest, ListsCelsByNumberAndThenLetter) {
    EXPECT_EQ(1, NextCelNumber(paths, "Walk"));
    MakeFiles(folder / "Test.scene" / "Walk", {"10.bit", "2b.bit", "2.bit", "1.bit", "2a.bit", "007.bit", "7.bit",
                                               "x.bit", "-3.bit", "99999999999.bit", "12.txt", ".bit"});
    EXPECT_EQ("1=1 2=2 2a=2a 2b=2b 7=007 7=7 10=10", Listed("Walk"));
    EXPECT_EQ(11, NextCelNumber(paths, "Walk"));
    MakeFiles(paths.CelFolder("Walk"), {"12a.bit"});
    EXPECT_EQ(13, NextCelNumber(paths, "Walk"));
    MakeFiles(paths.CelFolder("Walk"), {"2147483647.bit"});
    EXPECT_EQ(2147483647, NextCelNumber(paths, "Walk"));
}
