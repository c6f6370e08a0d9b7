#include "CommandLineFixture.h"
#include "platform/files/PngFile.h"

namespace velmor {
namespace {

using testing::CommandLine;
using testing::CRun;

class SequenceCommand : public CommandLine {
protected:
    std::string Make(const std::string& name) const {
        EXPECT_TRUE(CreateFolder(folder / "in"));
        const std::vector<std::uint8_t> pixels(std::size_t{6} * 4 * 4, 128);
        EXPECT_TRUE(WritePng(folder / "in" / name, {6, 4, 4, pixels}));
        return (folder / "in" / name).string() + " ";
    }
    CRun Import(const std::string& arguments) { return Run("import sequence " + Database() + "Test " + arguments); }
    CXSheet Sheet() const {
        CScene read;
        EXPECT_TRUE(LoadXSheet(scene.folder / "Test.xsheet", read));
        return read.xsheet;
    }
};

TEST_F(SequenceCommand, KeepsTheNumbersOfItsFilesAndExposesThem) {
    const std::string files = Make("shot2_0010.png") + Make("shot2_0009.png") + Make("shot2_0002.PNG");
    ASSERT_EQ(Import("--folder Dog --level Dog --at 9 --hold 2 --threshold 200 " + files).status, 0);
    EXPECT_EQ(ListFiles(scene.folder / "Dog", ".bit"), (std::vector<std::string>{"10.bit", "2.bit", "9.bit"}));
    CXSheet sheet = Sheet();
    ASSERT_EQ(sheet.LevelCount(), 4);
    ASSERT_EQ(sheet.FrameCount(), 14);
    EXPECT_EQ(sheet.LevelName(0), "Dog");
    EXPECT_FALSE(sheet.Cell(0, 7).IsUsed());
    for (const auto& [frame, cel] : {std::pair(8, "2"), {9, "2"}, {10, "9"}, {12, "10"}, {13, "10"}})
        EXPECT_TRUE(sheet.Cell(0, frame).Shows("Dog", cel)) << frame;
    EXPECT_EQ(sheet.Cell(0, 8).Size(), (CSize{6, 4}));

    ASSERT_EQ(Import("--pictures sky --level Dog " + Make("a1.png")).status, 0);
    CCelImg picture;
    ASSERT_TRUE(picture.Load(scene.folder / "_Pictures_" / "sky1.rgba"));
    EXPECT_EQ(picture.ColorAt(0, 0).alpha, 128);
    sheet = Sheet();
    EXPECT_EQ(sheet.LevelCount(), 4) << "the level is there already";
    EXPECT_TRUE(sheet.Cell(0, 0).Shows("_Pictures_", "sky1"));
}

TEST_F(SequenceCommand, LeavesOutSpecksHoldsOverGapsAndGoesOnPastBrokenFiles) {
    const std::string files = Make("d1.png") + Make("d4.png");
    testing::WriteBytes(folder / "in" / "d6.png", std::vector<std::uint8_t>{1, 2, 3});
    const CRun run = Import("--folder Dog --level Dog --hold-gaps --threshold 200 --despeckle 24 " + files +
                            (folder / "in" / "d6.png").string());
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.error.find("1 of 3 files could not be imported:\nd6.png: "), std::string::npos) << run.error;
    const CXSheet sheet = Sheet();
    for (const auto& [frame, cel] : {std::pair(0, "1"), {2, "1"}, {3, "4"}, {4, "4"}})
        EXPECT_TRUE(sheet.Cell(0, frame).Shows("Dog", cel)) << frame;
    EXPECT_FALSE(sheet.Cell(0, 5).IsUsed());
    CCelImg cel;
    ASSERT_TRUE(cel.Load(scene.folder / "Dog" / "1.bit"));
    EXPECT_FALSE(cel.IsLine(0, 0)) << "all of it is one speck";
}

TEST_F(SequenceCommand, WhatCannotBeExposedIsNotImported) {
    const auto before = Contents();
    const std::string file = Make("a1.png");
    EXPECT_EQ(Import(file).status, 2);
    EXPECT_EQ(Import("--folder A --hold 2 " + file).status, 2) << "without a level";
    EXPECT_EQ(Import("--folder A/B " + file).status, 1);
    EXPECT_EQ(Import("--folder Dog --level D --at 1999 --hold 2 " + file).status, 1);
    EXPECT_EQ(Import("--folder Dog --level D --hold 2147483647 " + file + Make("a2.png")).status, 1);
    EXPECT_EQ(Import("--folder Dog " + file + Make("b01.png")).status, 1) << "one number twice";
    EXPECT_EQ(Import("--folder Dog " + Make("a.png")).status, 1) << "no number";
    EXPECT_EQ(Import("--pictures sky --despeckle 2 " + file).status, 2) << "a picture has no lines";
    EXPECT_EQ(Import("--folder Dog --hold-gaps " + file).status, 2) << "without a level";
    EXPECT_EQ(Contents(), before);
}

} // namespace
} // namespace velmor
