#include "CommandLineFixture.h"
#include "xsheet/XSheetFile.h"

namespace velmor {
namespace {

using testing::CommandLine;
using testing::CRun;
using testing::TextOf;
using testing::WriteBytes;

class DialogueCommand : public CommandLine {
protected:
    CRun Dialogue(const std::string& verb, const std::string& arguments) {
        return Run("dialogue " + verb + " " + Database() + "Test " + arguments);
    }
    std::string Write(const std::string& name, const std::string& text) {
        WriteBytes(folder / name, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
        return (folder / name).string();
    }
};

TEST_F(DialogueCommand, ATextGoesInAndComesOut) {
    const std::string text = "2-5 Ann: mama\n7 oh\n";
    ASSERT_EQ(Dialogue("import", Write("in.txt", text)).status, 0);
    const std::string out = (folder / "out.txt").string();
    ASSERT_EQ(Dialogue("export", "-o " + out).status, 0);
    EXPECT_EQ(TextOf(out), text);
    const auto before = Contents();
    EXPECT_EQ(Dialogue("import", Write("bad.txt", "2-5 a\nb\n")).status, 1);
    EXPECT_EQ(Dialogue("import", Write("long.txt", "5-11 a\n")).status, 1);
    EXPECT_EQ(Dialogue("import", (folder / "none.txt").string()).status, 1);
    EXPECT_EQ(Contents(), before);
}

TEST_F(DialogueCommand, MouthsGoOntoALevel) {
    ASSERT_EQ(Dialogue("import", Write("in.txt", "2-5 maam\n")).status, 0);
    const std::string level = scene.data.xsheet.LevelName(0);
    const std::string chart = Write("chart.txt", "m = 1\na = 2\n");
    const std::string arguments = "--chart " + chart + " --folder A --level \"" + level + "\"";
    const auto before = Contents();
    const CRun dry = Dialogue("mouths", arguments + " --dry-run");
    EXPECT_EQ(dry.status, 0);
    EXPECT_NE(dry.output.find("cells change"), std::string::npos) << dry.output;
    EXPECT_EQ(Dialogue("mouths", "--chart " + chart + " --folder A --level None").status, 1);
    EXPECT_EQ(Dialogue("mouths", arguments + " --hold 9").status, 2);
    EXPECT_EQ(Contents(), before);
    ASSERT_EQ(Dialogue("mouths", arguments + " --hold 2").status, 0);
    CScene data;
    ASSERT_TRUE(LoadXSheet(scene.folder / "Test.xsheet", data));
    for (int frame = 1; frame <= 4; ++frame)
        EXPECT_TRUE(data.xsheet.Cell(0, frame).Shows("A", frame < 3 ? "2" : "1")) << frame;
}

} // namespace
} // namespace velmor
