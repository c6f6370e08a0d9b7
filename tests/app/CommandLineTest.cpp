#include "CommandLineFixture.h"
#include "PcmWave.h"

#include "image/import/ImageReaders.h"
#include "sound/SoundFile.h"

#include <chrono>
#include <csignal>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <regex>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace velmor {
namespace {

using testing::CommandLine;
using testing::CRun;
using testing::ReadBytes;
using testing::WriteBytes;

// The loader lists what it would load, and runs nothing. Movies and sound bring some 150 libraries along, which
// every start would pay for.
TEST_F(CommandLine, StartsWithoutTheLibrariesOfMoviesAndSound) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP()
        << "sanitizers look at the types of classes that are never used, and so bring their libraries along";
#endif
    const std::string list = (folder / "libraries").string();
    ASSERT_EQ(std::system(("LD_TRACE_LOADED_OBJECTS=1 " VELMOR_CLI " >" + list).c_str()), 0);
    const std::string libraries = testing::TextOf(list);
    ASSERT_NE(libraries.find("libstdc++"), std::string::npos) << libraries;
    for (const char* name : {"libav", "libsw", "libSDL", "libX11", "libQt", "libsane"})
        EXPECT_EQ(libraries.find(name), std::string::npos) << name;
}

TEST_F(CommandLine, WrongUsageHasStatusTwoAndAUsageLine) {
    for (const std::string arguments :
         {"", "frobnicate", "scenes", "compose --database x y -o z", "compose --database x y --frame 0 -o z",
          "flipbook --database x y --frames 5-2", "flipbook --database x y --scaling 5",
          "flipbook --database x y --levels 0", "render --database x y --format gif -o z",
          "import cel --database x y --folder f", "import cel --database x y --folder f --name 1 a.tga b.tga"}) {
        const CRun run = Run(arguments);
        EXPECT_EQ(run.status, 2) << arguments;
        EXPECT_NE(run.error.find("Usage: velmor-cli"), std::string::npos) << arguments;
    }
    EXPECT_EQ(Run("compose --database x y --frame 0 -o z").error.substr(0, 35),
              "--frame: not a number from 1 up: 0\n");
    EXPECT_EQ(Run("--help").status, 0);
    const CRun version = Run("--version");
    EXPECT_EQ(version.status, 0);
    EXPECT_TRUE(std::regex_match(version.output, std::regex("velmor-cli [0-9]+\\.[0-9]+\\.[0-9]+\n")));
}

TEST_F(CommandLine, WhatCannotBeReadIsNamedAndNothingChanges) {
    const auto before = Contents();
    EXPECT_EQ(Run("scenes --database " + (folder / "none").string()).status, 1);
    const CRun noScene = Run("compose " + Database() + "Nobody --frame 1 -o " + (folder / "x.png").string());
    EXPECT_EQ(noScene.status, 1);
    EXPECT_EQ(noScene.error, "Problem openning the scene\n");
    EXPECT_EQ(Run("compose " + Database() + "Test --frame 11 -o " + (folder / "x.png").string()).status, 1);
    EXPECT_EQ(Run("compose " + Database() + "Test --frame 1 -o " + (folder / "no/x.png").string()).status, 1);
    EXPECT_EQ(Run("flipbook " + Database() + "Test --step 9").error, "Invalid step value!\n");
    EXPECT_EQ(Run("flipbook " + Database() + "Test --levels 9").error,
              "You should select at least one level to generate a flipbook!\n");
    EXPECT_EQ(Run("render " + Database() + "Test --codec nothing -o " + (folder / "r").string()).error,
              "A suitable compressor cannot be found.\n");
    EXPECT_EQ(Contents(), before);
    EXPECT_FALSE(FileExists(folder / "x.png"));
}

TEST_F(CommandLine, DamagedFilesAreFoundAndLeaveThePreviousFlipbook) {
    ASSERT_EQ(Run("check " + Database()).status, 0);
    ASSERT_EQ(Run("flipbook " + Database() + "Test").status, 0);
    const Path cel = scene.folder / "A" / "2.bit";
    auto bytes = ReadBytes(cel);
    bytes.resize(bytes.size() - 3);
    WriteBytes(cel, bytes);
    static_cast<void>(RemoveFile(scene.folder / "_Sounds_" / "tick.sound"));
    const auto before = Contents();

    const CRun check = Run("check " + Database() + "Test");
    EXPECT_EQ(check.status, 1);
    EXPECT_NE(check.output.find(cel.string() + ": Unable to read cel file :: Truncated cel file"),
              std::string::npos);
    EXPECT_NE(check.output.find("tick.sound"), std::string::npos);
    EXPECT_EQ(std::count(check.output.begin(), check.output.end(), '\n'), 2);

    const CRun flipbook = Run("flipbook " + Database() + "Test");
    EXPECT_EQ(flipbook.status, 1);
    EXPECT_NE(
        flipbook.error.find("Unable to read cel file :: Truncated cel file :: Reading file ->" + cel.string()),
        std::string::npos);
    EXPECT_EQ(Run("compose " + Database() + "Test --frame 8 -o " + (folder / "x.png").string()).status, 1);
    EXPECT_EQ(Run("compose " + Database() + "Test --frame 1 -o " + (folder / "x.png").string()).status, 0);
    EXPECT_EQ(Contents(), before);
}

TEST_F(CommandLine, InfoTellsWhatTheSheetHolds) {
    EXPECT_EQ(Run("scenes " + Database()).output, "Test\n");
    const CRun run = Run("info --json " + Database() + "Test");
    ASSERT_EQ(run.status, 0);
    const auto info = nlohmann::json::parse(run.output);
    EXPECT_EQ(info["frameCount"], 10);
    EXPECT_EQ(info["frameRate"], 24);
    EXPECT_EQ(info["backgroundColor"], "#faf0e6");
    EXPECT_EQ(info["levels"].size(), 3U);
    EXPECT_EQ(info["levels"][0]["cells"].size(), 10U);
    EXPECT_EQ(info["levels"][0]["cells"][5],
              nlohmann::json::parse(R"({"frame": 6, "folder": "A", "cel": "2", "posX": 35, "posY": 24, "scaleX": 1,
                  "scaleY": 1, "rotation": 0, "transparency": 0, "blurX": 1, "blurY": 1, "width": 20, "height": 20})"));
    EXPECT_EQ(info["camera"][2]["panX"], 3.0);
    EXPECT_EQ(info["sounds"], nlohmann::json::parse(R"([{"frame": 3, "name": "tick"}])"));
    EXPECT_FALSE(info.contains("notes")) << "as long as there are none";
    scene.data.xsheet.MutableCell(1, 4).SetNote({SheetMark::StopHold, NoteColor::Blue, "wait\n\"here\""});
    scene.data.frameNotes.Set(1, {SheetMark::None, NoteColor::None, "Cut"});
    scene.Save();
    EXPECT_EQ(nlohmann::json::parse(Run("info --json " + Database() + "Test").output)["notes"],
              nlohmann::json::parse(R"([{"frame": 2, "comment": "Cut"},
                                        {"frame": 5, "level": 2, "mark": "stop-hold", "color": "blue",
                                         "comment": "wait\n\"here\""}])"));
}

TEST_F(CommandLine, ProgressIsReportedInLines) {
    const CRun run = Run("flipbook " + Database() + "Test --frames 3-8 --step 2");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.error, "FRAME: 3\nPROGRESS: 16%\nFRAME: 5\nPROGRESS: 50%\nFRAME: 7\nPROGRESS: 83%\n");
    EXPECT_TRUE(FileExists(database / "flipbook.avi"));
}

TEST_F(CommandLine, RendersTheFramesThatComposeShows) {
    ASSERT_EQ(
        Run("render " + Database() + "Test --frames 2,4-99 --step 2 --format bmp -o " + (folder / "r").string())
            .status,
        0);
    EXPECT_EQ(ListFiles(folder.Path(), ".bmp"),
              (std::vector<std::string>{"r0002.bmp", "r0005.bmp", "r0007.bmp", "r0009.bmp"}));
    for (const std::string format : {"avi", "avi --codec FFV1", "mp4 --quality 50"})
        ASSERT_EQ(Run("render " + Database() + "Test --format " + format + " -o " + (folder / "m").string()).status,
                  0);
    EXPECT_TRUE(FileExists(folder / "m.avi"));
    EXPECT_TRUE(FileExists(folder / "m.mp4"));
    const CRun progress =
        Run("render " + Database() + "Test --format mp4 --frames 9-12 -o " + (folder / "m.mp4").string());
    EXPECT_EQ(progress.error, "FRAME: 9\nPROGRESS: 50%\nFRAME: 10\nPROGRESS: 100%\n");
}

TEST_F(CommandLine, RendersIntoADirectoryThatItMakes) {
    const std::string render = "render " + Database() + "Test --frames 1 -o ";
    ASSERT_EQ(Run(render + (folder / "new" / "deep" / "f").string()).status, 0);
    EXPECT_TRUE(FileExists(folder / "new" / "deep" / "f0001.png"));
    WriteBytes(folder / "file", std::vector<std::uint8_t>{1});
    EXPECT_EQ(Run(render + (folder / "file" / "f").string()).error,
              "Could not create the directory " + (folder / "file").string() + "\n");
    ASSERT_EQ(
        Run("render " + Database() + "Test --frames 1 --codec none -o " + (folder / "no" / "f").string()).status,
        2);
    EXPECT_FALSE(FolderExists(folder / "no")) << "a refused render makes nothing";
}

TEST_F(CommandLine, FramesDividedAmongProcessesAreTheSameFiles) {
    for (const std::string format : {"png --transparent", "tga", "bmp"}) {
        const std::string render = "render " + Database() + "Test --antialias --scaling 150 --format " + format;
        const std::filesystem::path whole = folder / "whole";
        const std::filesystem::path parts = folder / "parts";
        ASSERT_TRUE(CreateFolder(whole) && CreateFolder(parts));
        ASSERT_EQ(Run(render + " -o " + (whole / "f").string()).status, 0);
        const std::string part = std::string(VELMOR_CLI) + " " + render + " -o " + (parts / "f").string();
        ASSERT_EQ(std::system((part + " --frames 1-5 2>/dev/null & " + part + " --frames 6-10 2>/dev/null; " +
                               "last=$?; wait $! && exit $last")
                                  .c_str()),
                  0);
        const std::vector<std::string> names = ListFiles(whole, "");
        ASSERT_EQ(names.size(), 10U);
        ASSERT_EQ(ListFiles(parts, ""), names);
        for (const std::string& name : names)
            EXPECT_EQ(ReadBytes(parts / name), ReadBytes(whole / name)) << name;
        std::filesystem::remove_all(whole);
        std::filesystem::remove_all(parts);
    }
}

TEST_F(CommandLine, AFullDiskIsToldAndLeavesNothingHalfWritten) {
    const std::filesystem::path output = folder / "output";
    ASSERT_TRUE(CreateFolder(output));
    for (const std::string format :
         {"png", "tga", "bmp", "avi", "avi --codec mjpeg", "avi --codec uncompressed", "mp4"}) {
        // Files may have four blocks of 512 bytes.
        const std::string command = "ulimit -f 4; " + std::string(VELMOR_CLI) + " render " + Database() +
                                    "Test --scaling 400 --format " + format + " -o " + (output / "f").string() +
                                    " 2>&1 | grep -q 'Could not write the rendered.*disk full'";
        EXPECT_EQ(std::system(command.c_str()), 0) << format;
        // A frame that is small enough stays, as a resumed rendering would want it.
        if (format != "png") {
            EXPECT_TRUE(ListFiles(output, "").empty()) << format;
        }
        EXPECT_TRUE(ListFiles(output, ".tmp").empty()) << format;
        std::filesystem::remove_all(output);
        static_cast<void>(CreateFolder(output));
    }
    std::filesystem::create_directory(output / "f.mp4"); // where the movie is to stand
    EXPECT_EQ(Run("render " + Database() + "Test --format mp4 -o " + (output / "f").string()).error,
              "A disk error occurred while opening the movie.\n");
}

TEST_F(CommandLine, WithoutAThreadItSaysSoAndLeavesNothing) {
    // No thread's stack fits into the address space.
    const std::string limit = "ulimit -s 200000000000 2>/dev/null || exit 0; ";
    const auto before = Contents();
    for (const std::string command : {"flipbook", "render --format avi -o f", "render --format png -o f"}) {
        const std::string inFolder = "cd " + folder.Path().string() + "; " + limit + VELMOR_CLI + " " + command +
                                     " " + Database() + "Test 2>&1 | grep -q 'did not start a new background'";
        EXPECT_EQ(std::system(inFolder.c_str()), 0) << command;
    }
    EXPECT_EQ(Contents(), before);
    EXPECT_TRUE(ListFiles(folder.Path(), "").empty());
}

TEST_F(CommandLine, ImportsDrawingsPicturesAndSounds) {
    const auto tga = (folder / "in.tga").string();
    std::vector<std::uint8_t> bytes = {0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 4, 0, 3, 0, 24, 0};
    for (int i = 0; i < 12; ++i)
        bytes.insert(bytes.end(), 3, static_cast<std::uint8_t>(i * 20));
    WriteBytes(tga, bytes);

    const std::string cel = "import cel " + Database() + "Test --folder B --threshold 100 ";
    ASSERT_EQ(Run(cel + tga + " " + tga).status, 0);
    ASSERT_EQ(Run(cel + "--name 12a " + tga).status, 0);
    EXPECT_EQ(ListFiles(scene.folder / "B", ".bit"), (std::vector<std::string>{"1.bit", "12a.bit", "2.bit"}));
    EXPECT_TRUE(FileExists(scene.folder / "B" / "B.colors"));
    CCelImg image;
    ASSERT_TRUE(image.Load(scene.folder / "B" / "2.bit"));
    EXPECT_TRUE(image.IsLine(0, 1));  // grey 80
    EXPECT_FALSE(image.IsLine(1, 1)); // grey 100

    ASSERT_EQ(Run("import picture " + Database() + "Test --name sky " + tga).status, 0);
    ASSERT_TRUE(image.Load(scene.folder / "_Pictures_" / "sky.rgba"));
    EXPECT_EQ(image.ColorAt(3, 2), (CColor{220, 220, 220, 255}));

    std::vector<std::uint8_t> wave = {
        'R', 'I', 'F', 'F', 40, 0,  0, 0, 'W', 'A', 'V', 'E', 'f', 'm', 't', ' ', 16, 0, 0, 0, 1, 0, 1, 0,
        17,  43,  0,   0,   17, 43, 0, 0, 1,   0,   8,   0,   'd', 'a', 't', 'a', 4,  0, 0, 0, 1, 2, 3, 4};
    WriteBytes(folder / "in.wav", wave);
    ASSERT_EQ(Run("import sound " + Database() + "Test --name click " + (folder / "in.wav").string()).status, 0);
    std::vector<std::uint8_t> samples;
    ASSERT_TRUE(LoadSoundFile(scene.folder / "_Sounds_" / "click.sound", "click", samples));
    EXPECT_EQ(samples, (std::vector<std::uint8_t>{1, 1, 2, 2, 3, 3, 4, 4})); // 11025 a second

    const Path stereo = folder / "stereo.wav";
    WriteBytes(stereo, testing::PcmWave(48000, 2, 24, 4800, [](int, int) { return 0.5; }));
    const std::string convert = "import sound " + Database() + "Test --convert --name Long " + stereo.string();
    ASSERT_EQ(Run(convert).status, 0);
    ASSERT_TRUE(LoadSoundFile(scene.folder / "_Sounds_" / "Long.sound", "Long", samples));
    EXPECT_NEAR(static_cast<double>(samples.size()), 2205, 2);
    EXPECT_TRUE(FileExists(scene.folder / "_Sounds_" / "Long.original"));

    const auto before = Contents();
    EXPECT_EQ(Run("import sound " + Database() + "Test --name Other " + stereo.string()).error,
              "Unsupported audio file!\n(8bit Mono PCM encoded wave files are supported)\n");
    EXPECT_EQ(Run(cel + "--name a1 " + tga).status, 1);
    EXPECT_EQ(Run("import cel " + Database() + "Test --folder _Pictures_ " + tga).status, 1);
    bytes.resize(30);
    WriteBytes(tga, bytes);
    EXPECT_EQ(Run(cel + tga).error, "Error : in.tga is corrupted!\nError in import\n");
    EXPECT_EQ(Run("import sound " + Database() + "Test --name click " + tga).error,
              "Invalid Audio File extension\n");
    EXPECT_EQ(Contents(), before);
}

TEST_F(CommandLine, EveryCommandThatWritesSaysWhenAFileMayNotGrow) {
    WriteBytes(folder / "in.tga", std::vector<std::uint8_t>{0, 0,  2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2,  0,  2,
                                                            0, 24, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
    WriteBytes(folder / "in.csv", std::vector<std::uint8_t>{'F', 'r', 'a', 'm', 'e', ',', 'N', 'e', 'w', '\n'});
    ASSERT_EQ(Run("sheet export " + Database() + "Test -o " + (folder / "in.xdts").string()).status, 0);
    scene.data.xsheet.MutableCell(0, 0).Clear(); // so that importing it changes the sheet
    scene.Save();
    const auto before = Contents();
    const std::string out = (folder / "o").string(), in = (folder / "in.tga").string();
    for (const std::string& command : {
             "demo " + Database(),
             "compose " + Database() + "Test --frame 1 -o " + out,
             "flipbook " + Database() + "Test",
             "import picture " + Database() + "Test --name sky " + in,
             "import cel " + Database() + "Test --folder A " + in,
             "import sequence " + Database() + "Test --pictures sky " + (folder / "1.tga").string(),
             "sheet export " + Database() + "Test --format csv -o " + out,
             "sheet import " + Database() + "Test " + (folder / "in.xdts").string(),
             "print " + Database() + "Test -o " + out,
             "farm parallel " + Database() + "Test --job " + out + " -o " + out,
         }) {
        std::filesystem::copy_file(in, folder / "1.tga", std::filesystem::copy_options::overwrite_existing);
        const int status = std::system(("(ulimit -f 0; " + std::string(VELMOR_CLI) + " " + command +
                                        "; test $? -eq 1 || echo STATUS) 2>&1 | cat >" + (folder / "told").string())
                                           .c_str());
        EXPECT_EQ(status, 0) << command;
        const std::string told = testing::TextOf(folder / "told");
        EXPECT_FALSE(told.empty() || told.find("STATUS") != std::string::npos) << command << ": " << told;
        EXPECT_EQ(Contents(), before) << command;
        EXPECT_FALSE(FileExists(out));
    }
}

TEST_F(CommandLine, OutputThatCannotBeWrittenIsAFailure) {
    EXPECT_EQ(std::system((std::string(VELMOR_CLI) + " info " + Database() + "Test >/dev/full 2>" +
                           (folder / "told").string() + "; test $? -eq 1")
                              .c_str()),
              0);
    EXPECT_EQ(testing::TextOf(folder / "told"), "Could not write the output\n");
}

// Process numbers come again, in containers soon.
TEST_F(CommandLine, AFlipbookIsMadeBesideALeftoverOfItsOwnProcessNumber) {
    EXPECT_EQ(std::system(("touch " + (database / "flipbook.avi").string() + ".$$-0.tmp; exec " + VELMOR_CLI +
                           " flipbook " + Database() + "Test 2>/dev/null")
                              .c_str()),
              0);
    EXPECT_TRUE(FileExists(database / "flipbook.avi"));
}

TEST_F(CommandLine, AKilledDemoLeavesNoSceneAndTheNextOneClearsUp) {
    const std::string made = "find " + database.string() + " -name '*.bit' -path '*Demo*' | grep -q .";
    const std::string demo = std::string(VELMOR_CLI) + " demo " + Database() + ">/dev/null 2>&1";
    ASSERT_EQ(std::system((demo + " & until " + made + "; do sleep 0.01; done; kill -9 $!").c_str()), 0);
    EXPECT_EQ(Run("scenes " + Database()).output, "Test\n");
    EXPECT_EQ(std::system(made.c_str()), 0) << "half of it is there";
    ASSERT_EQ(Run("demo " + Database()).status, 0);
    EXPECT_EQ(Run("scenes " + Database()).output, "Demo\nTest\n");
    EXPECT_EQ(ListFolders(database), (std::vector<std::string>{"Demo.scene", "Test.scene"}));
    EXPECT_EQ(ListFiles(database, ""), std::vector<std::string>{});
}

TEST_F(CommandLine, AnInterruptLeavesNoHalfWrittenFile) {
    scene.data.geometry.width = 1920;
    scene.data.geometry.height = 1080;
    scene.data.xsheet.SetFrameCount(1999);
    scene.Save();
    const auto before = Contents();
    const pid_t tool = ::fork();
    ASSERT_GE(tool, 0);
    if (tool == 0) {
        ::close(STDERR_FILENO);
        ::execl(VELMOR_CLI, VELMOR_CLI, "flipbook", "--database", database.c_str(), "Test",
                static_cast<char*>(nullptr));
        ::_exit(3);
    }
    const auto unfinished = [this] { return ListFiles(database, ".tmp").size(); };
    int status = 0;
    while (unfinished() == 0 && ::waitpid(tool, &status, WNOHANG) == 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    EXPECT_EQ(unfinished(), 1U);
    ::kill(tool, SIGINT);
    ASSERT_EQ(::waitpid(tool, &status, 0), tool);
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(Contents(), before);
}

} // namespace
} // namespace velmor
