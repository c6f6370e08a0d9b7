#include "CommandLineFixture.h"

#include <chrono>
#include <csignal>
#include <nlohmann/json.hpp>
#include <sstream>
#include <thread>
#include <unistd.h>

namespace velmor {
namespace {

using testing::CommandLine;
using testing::CRun;
using testing::CTestScene;
using testing::ReadBytes;
using testing::WriteBytes;

class RenderCommand : public CommandLine {
protected:
    std::string Output(const std::string& name) const { return " -o " + (folder / "made" / name).string(); }
    CRun Render(const std::string& arguments) { return Run("render " + Database() + "Test " + arguments); }
    std::vector<std::string> Made() const { return ListFiles(folder / "made", ""); }

    void Break(const std::string& cel) const {
        WriteBytes(scene.folder / "A" / cel, std::vector<std::uint8_t>{1, 2, 3});
    }
};

std::vector<nlohmann::json> Lines(const std::string& text) {
    std::vector<nlohmann::json> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(nlohmann::json::parse(line));
    return lines;
}

TEST_F(RenderCommand, TimeBuysSmallerPngFiles) {
    std::vector<std::size_t> sizes;
    for (const std::string compression : {"fast", "normal", "best"}) {
        ASSERT_EQ(Render("--frames 2 --antialias --compression " + compression + Output(compression)).status, 0);
        sizes.push_back(ReadBytes(folder / "made" / (compression + "0002.png")).size());
    }
    EXPECT_LT(sizes[2], sizes[1]);
    EXPECT_NE(sizes[0], sizes[1]);
    EXPECT_EQ(Render("--compression utmost" + Output("f")).status, 2);
}

TEST_F(RenderCommand, TheStatusTellsWhatAFarmIsToDo) {
    const auto before = Contents();
    EXPECT_EQ(Render("--frames 1-9x0" + Output("f")).status, 2);
    EXPECT_EQ(Render("--existing maybe" + Output("f")).status, 2);
    EXPECT_EQ(Render("--threads 0" + Output("f")).status, 2);
    EXPECT_EQ(Run("render " + Database() + Output("f")).status, 2) << "no scene";
    EXPECT_EQ(Render("--frames 11-20" + Output("f")).status, 2) << "behind the end of the scene";
    EXPECT_EQ(Run("render --database " + (folder / "none").string() + " Test" + Output("f")).status, 3);
    EXPECT_EQ(Run("render " + Database() + "Nobody" + Output("f")).status, 3);
    WriteBytes(folder / "file", std::vector<std::uint8_t>{1});
    EXPECT_EQ(Render("-o " + (folder / "file" / "f").string()).status, 5);
    EXPECT_FALSE(FolderExists(folder / "made"));
    EXPECT_EQ(Render("--frames 2-9x3,10 --format bmp" + Output("f")).status, 0);
    EXPECT_EQ(Made(), (std::vector<std::string>{"f0002.bmp", "f0005.bmp", "f0008.bmp", "f0010.bmp"}));
    EXPECT_EQ(Contents(), before);

    WriteBytes(scene.folder / "Test.xsheet", std::vector<std::uint8_t>{26, 'V'});
    EXPECT_EQ(Render(Output("f")).status, 3);
}

TEST_F(RenderCommand, ABrokenOrMissingCelFailsItsFramesAloneAndIsNamed) {
    const Path cel = scene.folder / "A" / "2.bit";
    Break("2.bit");
    const CRun broken = Render("--format bmp --frames 4-7" + Output("f"));
    EXPECT_EQ(broken.status, 6);
    EXPECT_EQ(Made(), (std::vector<std::string>{"f0004.bmp", "f0005.bmp"}));
    EXPECT_NE(broken.error.find("FAILED: 6 "), std::string::npos);
    EXPECT_NE(broken.error.find("FAILED: 7 "), std::string::npos);
    EXPECT_NE(broken.error.find(cel.string()), std::string::npos);
    EXPECT_NE(broken.error.find("2 of 4 frames could not be rendered\n"), std::string::npos);
    EXPECT_EQ(Render("--format avi" + Output("m")).status, 6);
    EXPECT_EQ(Made().size(), 2U);

    static_cast<void>(RemoveFile(cel));
    EXPECT_EQ(Render("--format bmp" + Output("f")).status, 4);
    EXPECT_EQ(Made().size(), 5U);
    EXPECT_EQ(Render("--levels 3 --format bmp" + Output("back")).status, 0);
    static_cast<void>(RemoveFile(scene.folder / "_Sounds_" / "tick.sound"));
    const CRun silent = Render("--levels 3 --format avi" + Output("m"));
    EXPECT_EQ(silent.status, 4);
    EXPECT_NE(silent.error.find("tick.sound"), std::string::npos);
    EXPECT_FALSE(FileExists(folder / "made" / "m.avi"));
}

TEST_F(RenderCommand, ExistingFramesAreSkippedOnlyWhenWhole) {
    ASSERT_EQ(Render(Output("f")).status, 0);
    const auto third = ReadBytes(folder / "made" / "f0003.png");
    const auto sixth = IdentifyFile(folder / "made" / "f0006.png");
    WriteBytes(folder / "made" / "f0003.png", std::span(third).first(third.size() - 5));
    const CRun again = Render("--existing skip --log json" + Output("f"));
    EXPECT_EQ(again.status, 0);
    EXPECT_EQ(ReadBytes(folder / "made" / "f0003.png"), third);
    EXPECT_EQ(IdentifyFile(folder / "made" / "f0006.png"), sixth);
    const auto lines = Lines(again.error);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0], nlohmann::json::parse(R"({"event": "frame", "frame": 3, "percent": 100})"));
    EXPECT_EQ(lines[1],
              nlohmann::json::parse(
                  R"({"event": "end", "scene": "Test", "status": 0, "written": 1, "kept": 9, "failed": 0})"));
    ASSERT_EQ(Render("--existing overwrite" + Output("f")).status, 0);
    EXPECT_NE(IdentifyFile(folder / "made" / "f0006.png"), sixth);
}

TEST_F(RenderCommand, JoinMakesTheMovieOfOneMachine) {
    for (const std::string format : {"avi --quality 60", "avi --codec FFV1", "mp4"}) {
        const std::string choices = "--scaling 70 --frames 2-9x2 --step 2 ";
        ASSERT_EQ(Render(choices + "--format " + format + Output("one")).status, 0);
        const std::string movie = format.substr(0, 3);
        ASSERT_EQ(Render("--scaling 70 --for " + movie + " --frames 2-5" + Output("f")).status, 0);
        ASSERT_EQ(Render("--scaling 70 --for " + movie + " --frames 6-9" + Output("f")).status, 0);
        const std::string join =
            "join " + Database() + "Test --from " + (folder / "made" / "f").string() + " --format " + format + " ";
        ASSERT_EQ(Run(join + choices + Output("joined")).status, 0);
        EXPECT_EQ(ReadBytes(folder / "made" / ("joined." + movie)), ReadBytes(folder / "made" / ("one." + movie)));

        const CRun missing = Run(join + "--scaling 70" + Output("other"));
        EXPECT_EQ(missing.status, 4);
        EXPECT_EQ(missing.error, (folder / "made" / "f0001.png").string() + " is missing\n" +
                                     (folder / "made" / "f0010.png").string() + " is missing\n");
        EXPECT_EQ(Run(join + "--frames 2-9" + Output("other")).status, 6) << "frames of another size";
        EXPECT_FALSE(FileExists(folder / "made" / ("other." + movie)));
    }
}

TEST_F(RenderCommand, SeveralScenesGiveOneReport) {
    const CTestScene other(database, "Other");
    ASSERT_TRUE(CreateFolder(database / "Broken.scene"));
    const CRun run = Run("render " + Database() + "--scenes all --frames 1-2 --format bmp" + Output("f"));
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(run.output, "Broken: cannot be read, status 3\n"
                          "Other: 2 frames written, 0 kept, 0 failed, status 0\n"
                          "Test: 2 frames written, 0 kept, 0 failed, status 0\n");
    EXPECT_TRUE(FileExists(folder / "made" / "Other" / "f0002.bmp"));
    EXPECT_TRUE(FileExists(folder / "made" / "Test" / "f0002.bmp"));
    EXPECT_EQ(Run("render " + Database() + "--scenes Other,Test --frames 1" + Output("g")).status, 0);
    EXPECT_EQ(Run("check " + Database() + "--scenes Other,Test").status, 0);
    const CRun check = Run("check " + Database() + "--scenes Test,Broken");
    EXPECT_EQ(check.status, 1);
    EXPECT_NE(check.output.find("Test: whole\n"), std::string::npos);
    EXPECT_NE(check.output.find("Broken: 1 file damaged or missing\n"), std::string::npos);
}

TEST_F(RenderCommand, ADryRunSaysWhatWouldBeMadeAndMakesNothing) {
    ASSERT_EQ(Render("--frames 2 --format bmp" + Output("f")).status, 0);
    static_cast<void>(RemoveFile(scene.folder / "A" / "2.bit"));
    const std::string out = (folder / "made" / "f000").string();
    const CRun dry = Render("--dry-run --existing skip --frames 1-2,6 --format bmp" + Output("f"));
    EXPECT_EQ(dry.status, 4);
    EXPECT_EQ(dry.output, "make " + out + "1.bmp\nkeep " + out + "2.bmp\nmake " + out + "6.bmp\n");
    EXPECT_EQ(dry.error, (scene.folder / "A" / "2.bit").string() + " is missing\n");
    EXPECT_EQ(Render("--dry-run --levels 3 --format mp4" + Output("new/m")).output,
              "make " + (folder / "made" / "new" / "m.mp4").string() + " of 10 frames\n");
    EXPECT_EQ(Made(), (std::vector<std::string>{"f0002.bmp"}));
}

TEST_F(RenderCommand, LevelsBecomeSequencesOfTheirOwn) {
    scene.data.xsheet.SetLevelName(0, "Fox & Co");
    scene.data.xsheet.SetLevelName(2, "Fox & Co");
    scene.Save();
    ASSERT_EQ(Render("--levels 1,3 --each-level --transparent --frames 5 --format tga" + Output("f")).status, 0);
    EXPECT_EQ(Made(), (std::vector<std::string>{"f-Fox___Co-0005.tga", "f-Fox___Co-3-0005.tga"}));
    ASSERT_EQ(Render("--levels 3 --transparent --frames 5 --format tga" + Output("g")).status, 0);
    EXPECT_EQ(ReadBytes(folder / "made" / "f-Fox___Co-3-0005.tga"), ReadBytes(folder / "made" / "g0005.tga"));
}

TEST_F(RenderCommand, BeingToldToEndLeavesNoHalfFileAndAStatusOfItsOwn) {
    scene.data.geometry.width = 1920;
    scene.data.geometry.height = 1080;
    scene.data.xsheet.SetFrameCount(1999);
    scene.Save();
    ASSERT_TRUE(CreateFolder(folder / "made"));
    const std::string output = (folder / "made" / "f").string();
    const pid_t tool = ::fork();
    ASSERT_GE(tool, 0);
    if (tool == 0) {
        ::close(STDERR_FILENO);
        ::execl(VELMOR_CLI, VELMOR_CLI, "render", "--database", database.c_str(), "Test", "-o", output.c_str(),
                static_cast<char*>(nullptr));
        ::_exit(9);
    }
    int status = 0;
    while (Made().size() < 4 && ::waitpid(tool, &status, WNOHANG) == 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    ::kill(tool, SIGTERM);
    ASSERT_EQ(::waitpid(tool, &status, 0), tool);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 7);
    for (const std::string& name : Made())
        EXPECT_TRUE(name.ends_with(".png")) << name;
}

} // namespace
} // namespace velmor
