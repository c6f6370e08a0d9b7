#include "CommandLineFixture.h"

namespace velmor {
namespace {

using testing::CommandLine;
using testing::CRun;
using testing::ReadBytes;
using testing::WriteBytes;

class SheetCommand : public CommandLine {
protected:
    CRun Sheet(const std::string& verb, const std::string& arguments) {
        return Run("sheet " + verb + " " + Database() + "Test " + arguments);
    }
};

TEST_F(SheetCommand, SheetsGoOutAndComeBack) {
    const auto before = Contents();
    for (const std::string name : {"s.xdts", "s.csv"}) {
        const std::string file = (folder / name).string();
        const CRun out = Sheet("export", "-o " + file);
        ASSERT_EQ(out.status, 0);
        EXPECT_NE(out.error.find("positions, scales and rotations are not in the file"), std::string::npos);
        EXPECT_NE(out.error.find("The camera is not in the file"), std::string::npos);
        const CRun in = Sheet("import", file);
        EXPECT_EQ(in.status, 0);
        EXPECT_EQ(in.output, "Nothing changes\n");
    }
    EXPECT_EQ(Contents(), before);
    EXPECT_EQ(Sheet("export", "-o " + (folder / "no" / "s.csv").string()).status, 1);
}

TEST_F(SheetCommand, AnImportChangesWhatItSaysAndHostileFilesNothing) {
    const std::string file = (folder / "s.csv").string();
    const auto write = [&](const std::string& text) {
        WriteBytes(file, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
    };
    const auto before = Contents();
    write("Frame,New\n1,1\n2,2\n3,../x\n4,9\n");
    const CRun dry = Sheet("import", "--dry-run --folder A " + file);
    EXPECT_EQ(dry.status, 0);
    EXPECT_EQ(dry.output, "Length: 10 frames before, 4 after\nNew level \"New\"\nLevel \"New\": 2 cells change\n");
    EXPECT_EQ(Contents(), before);
    write("Frame,New\n1,\"1\n");
    EXPECT_EQ(Sheet("import", file).status, 1);
    EXPECT_EQ(Sheet("import", "--format xdts " + file).status, 1);
    EXPECT_EQ(Sheet("import", (folder / "none.csv").string()).status, 1);
    EXPECT_EQ(Contents(), before);

    write("Frame,New\n1,1\n2,2\n");
    ASSERT_EQ(Sheet("import", "--folder A " + file).status, 0);
    CScene data;
    ASSERT_TRUE(LoadXSheet(scene.folder / "Test.xsheet", data));
    ASSERT_EQ(data.xsheet.LevelCount(), 4);
    EXPECT_EQ(data.xsheet.FrameCount(), 2);
    EXPECT_TRUE(data.xsheet.Cell(0, 1).Shows("A", "2"));
    EXPECT_EQ(data.xsheet.Cell(0, 1).Size(), (CSize{20, 20}));
    EXPECT_EQ(data.camera.At(1), scene.data.camera.At(1));
    EXPECT_EQ(data.geometry, scene.data.geometry);
}

TEST_F(SheetCommand, IsPrintedWhereThereIsAProgramForIt) {
    const auto before = Contents();
    const std::string file = (folder / "sheet.pdf").string();
    const CRun run = Run("print " + Database() + "Test -o " + file);
    if (run.status != 0 && run.error.find("Printing needs the program velmor-print") != std::string::npos)
        GTEST_SKIP() << "built without the window";
    ASSERT_EQ(run.status, 0) << run.error;
    EXPECT_TRUE(testing::TextOf(file).starts_with("%PDF-"));
    EXPECT_GT(ReadBytes(file).size(), 2000U);
    EXPECT_EQ(Run("print " + Database() + "Nobody -o " + (folder / "no.pdf").string()).status, 1);
    EXPECT_EQ(Run("print " + Database() + "Test -o " + (folder / "no" / "s.pdf").string()).status, 1);
    EXPECT_FALSE(FileExists(folder / "no.pdf"));
    EXPECT_EQ(Contents(), before);
}

} // namespace
} // namespace velmor
