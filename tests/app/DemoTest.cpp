#include "TempFolder.h"
#include "app/cli/Commands.h"
#include "app/demo/FoxPose.h"
#include "image/CelImg.h"
#include "scene/ScenePaths.h"
#include "sound/SoundFile.h"
#include "sound/SoundTrack.h"
#include "xsheet/XSheetFile.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <map>
#include <optional>

namespace velmor {
namespace {

using testing::CTempFolder;
using testing::ReadBytes;

using FileTree = std::map<std::string, std::vector<std::uint8_t>>;

FileTree FilesIn(const Path& folder) {
    FileTree files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        if (entry.is_regular_file())
            files[entry.path().lexically_relative(folder).string()] = ReadBytes(entry.path());
    return files;
}

/// The scene is made once for all tests; none of them changes it.
class Demo : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        s_folder.emplace();
        s_made = RunDemo({Database(), ""});
    }
    static void TearDownTestSuite() { s_folder.reset(); }

    void SetUp() override {
        ASSERT_TRUE(s_made);
        ASSERT_TRUE(LoadXSheet(Paths().XSheetFile(), data));
    }

    static std::string Database() { return (*s_folder / "Database").string(); }
    static CScenePaths Paths() { return {WithSeparator(Database()), "Demo"}; }

    int LevelNamed(const std::string& name) const {
        for (int level = 0; level < data.xsheet.LevelCount(); ++level)
            if (data.xsheet.LevelName(level) == name)
                return level;
        ADD_FAILURE() << "no level " << name;
        return 0;
    }
    const CXSheetCell& Cel(const std::string& level, int frame) const {
        return data.xsheet.Cell(LevelNamed(level), frame);
    }

    CScene data;

private:
    static inline std::optional<CTempFolder> s_folder;
    static inline bool s_made = false;
};

TEST_F(Demo, IsASceneOfSeveralFilledLevels) {
    EXPECT_TRUE(RunCheck({Database(), {}}));
    EXPECT_EQ(data.geometry.width, 768);
    EXPECT_EQ(data.geometry.height, 576);
    EXPECT_EQ(data.geometry.frameRate, 25);
    ASSERT_EQ(data.xsheet.FrameCount(), 100);
    EXPECT_GE(data.xsheet.LevelCount(), 4);
    for (int level = 0; level < data.xsheet.LevelCount(); ++level)
        EXPECT_TRUE(data.xsheet.Cell(level, 0).IsUsed()) << data.xsheet.LevelName(level);
    for (int frame = 0; frame < 100; ++frame)
        EXPECT_TRUE(Cel("Fox", frame).IsUsed() && Cel("Meadow", frame).IsPicture()) << frame;
}

// The camera must never look past an edge of the picture: black would show.
TEST_F(Demo, PictureFillsEveryFrame) {
    for (int frame = 0; frame < 100; ++frame) {
        const CCameraFrame& camera = data.camera.At(frame);
        const CXSheetCell& picture = Cel("Meadow", frame);
        const double left = picture.PosX() - picture.Size().width / 2 + camera.panX - 384;
        const double bottom = picture.PosY() - picture.Size().height / 2 + camera.panY - 288;
        EXPECT_LE(left * camera.zoom, -384) << frame;
        EXPECT_GE((left + picture.Size().width) * camera.zoom, 384) << frame;
        EXPECT_LE(bottom * camera.zoom, -288) << frame;
        EXPECT_GE((bottom + picture.Size().height) * camera.zoom, 288) << frame;
    }
}

TEST_F(Demo, CharacterIsPaintedOnTransparentPaperAndNotCutOff) {
    const std::vector<std::string> cels = ListCelTitles(Paths(), "Fox");
    ASSERT_GE(cels.size(), 8u);
    std::vector<std::uint8_t> before;
    for (const std::string& name : cels) {
        const Path path = Paths().CelFile("Fox", name);
        CCelImg cel;
        ASSERT_TRUE(cel.Load(path)) << name;
        int painted = 0;
        for (int y = 0; y < cel.Height(); ++y)
            for (int x = 0; x < cel.Width(); ++x) {
                const bool edge = x == 0 || y == 0 || x == cel.Width() - 1 || y == cel.Height() - 1;
                const CColor color = cel.ColorAt(x, y);
                ASSERT_TRUE(!edge || color.alpha == 0)
                    << name << ": paint has leaked, or the figure is cut, at " << x << ", " << y;
                painted += color.alpha == 255 && !cel.IsLine(x, y);
                ASSERT_FALSE(color == (CColor{255, 255, 255, 255}) && cel.IsLine(x, y)) << name;
            }
        EXPECT_GT(painted, 40000) << name;
        std::vector<std::uint8_t> bytes = ReadBytes(path);
        EXPECT_NE(bytes, before) << name << " is the drawing before it again";
        before = std::move(bytes);
    }
}

// While the fox walks, its drawings change with every frame; afterwards each is held for at least two.
TEST_F(Demo, DrawingsAreHeldOnTwosAfterTheWalk) {
    constexpr int walkEnd = 64;
    for (int frame = 1; frame < walkEnd; ++frame)
        EXPECT_FALSE(Cel("Fox", frame).ShowsSameAs(Cel("Fox", frame - 1))) << frame;
    for (int frame = walkEnd; frame < 100; frame += 2) {
        const CXSheetCell& second = Cel("Fox", frame + 1);
        EXPECT_TRUE(second.ShowsSameAs(Cel("Fox", frame))) << frame;
        EXPECT_EQ(second.Transform(), Cel("Fox", frame).Transform()) << frame;
    }
}

// Where a foot stands, it stays on its spot of the ground, give or take a pixel of the frame.
TEST_F(Demo, FeetDoNotSlide) {
    const std::vector<demo::CFoxPose> walk = demo::WalkPoses();
    ASSERT_EQ(walk.size(), 16u);
    double spot = 0;
    for (int frame = 0; frame <= 6; ++frame) {
        const CXSheetCell& cel = Cel("Fox", frame);
        EXPECT_EQ(cel.CelName(), std::to_string(frame + 1));
        const double foot = cel.PosX() + walk[static_cast<std::size_t>(frame)].nearFoot.x * cel.ScaleX();
        if (frame > 0)
            EXPECT_NEAR(foot, spot, 1.5) << frame;
        else
            spot = foot;
    }
}

TEST_F(Demo, FoxLeapsAndComesDownAgain) {
    const double ground = Cel("Fox", 0).PosY();
    double top = ground;
    for (int frame = 0; frame < 100; ++frame)
        top = std::max(top, Cel("Fox", frame).PosY());
    EXPECT_GT(top, ground + 80);
    EXPECT_NEAR(Cel("Fox", 63).PosY(), ground, 0.01);
    EXPECT_NEAR(Cel("Fox", 99).PosY(), ground, 0.01);
    EXPECT_LT(Cel("Shadow", 79).ScaleX(), Cel("Shadow", 60).ScaleX() * 0.8);
}

TEST_F(Demo, CameraPansAndZoomsWithoutJerks) {
    const CCameraTrack& camera = data.camera;
    for (int frame = 2; frame < 100; ++frame) {
        const auto bend = [&](double CCameraFrame::*value) {
            return std::abs(camera.At(frame).*value - 2 * camera.At(frame - 1).*value +
                            camera.At(frame - 2).*value);
        };
        EXPECT_LT(bend(&CCameraFrame::panX), 1.0) << frame;
        EXPECT_LT(bend(&CCameraFrame::panY), 1.0) << frame;
        EXPECT_LT(bend(&CCameraFrame::zoom), 0.01) << frame;
    }
    EXPECT_LT(camera.At(99).panX, camera.At(0).panX - 200);
    EXPECT_GT(camera.At(99).zoom, camera.At(0).zoom + 0.3);
}

TEST_F(Demo, EffectsChangeGradually) {
    double before = 0;
    for (int frame = 0; frame < 36; ++frame) {
        const double transparency = Cel("Title", frame).Transparency();
        EXPECT_GE(transparency, before) << frame;
        EXPECT_LT(transparency, before + 15) << frame;
        before = transparency;
    }
    EXPECT_EQ(before, 100);
    EXPECT_GT(Cel("Plants", 99).BlurX(), Cel("Plants", 50).BlurX());
    EXPECT_GT(Cel("Plants", 50).BlurX(), Cel("Plants", 0).BlurX());
    EXPECT_GT(Cel("Cloud", 50).Transparency(), 0);
}

TEST_F(Demo, StepsAreHeardWhenTheFeetTouchTheGround) {
    ASSERT_GE(data.sounds.Count(), 10);
    std::optional<std::vector<std::uint8_t>> track;
    ASSERT_TRUE(PrepareTrack(
        data.sounds.All(), 100, 25,
        [](const std::string& name, std::vector<std::uint8_t>& samples) {
            return LoadSoundFile(Paths().SoundFile(name), name, samples);
        },
        track));
    const int perFrame = SamplesPerFrame(25);
    for (int frame = 0; frame <= 64; frame += 8) {
        const auto start = track->begin() + frame * perFrame;
        const auto [least, most] = std::minmax_element(start, start + perFrame);
        EXPECT_GT(*most - *least, 60) << frame;
    }
}

TEST_F(Demo, FramesDiffer) {
    CTempFolder folder;
    std::vector<std::uint8_t> before;
    for (const int frame : {1, 40, 80, 100}) {
        const Path picture = folder / (std::to_string(frame) + ".png");
        ASSERT_TRUE(RunCompose({{Database(), "Demo"}, frame, true, picture.string()}));
        std::vector<std::uint8_t> bytes = ReadBytes(picture);
        EXPECT_NE(bytes, before) << frame;
        before = std::move(bytes);
    }
}

TEST_F(Demo, SecondRunRefusesAndChangesNothing) {
    const FileTree before = FilesIn(Database());
    ::testing::internal::CaptureStderr();
    EXPECT_FALSE(RunDemo({Database(), ""}));
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "Scene already exists. Use 'Open Scene' to open it.\n");
    EXPECT_EQ(FilesIn(Database()), before);
}

TEST_F(Demo, IsTheSameEveryTime) {
    CTempFolder folder;
    ASSERT_TRUE(RunDemo({folder.Path().string(), ""}));
    const FileTree files = FilesIn(folder.Path());
    EXPECT_GT(files.size(), 30u);
    EXPECT_EQ(files, FilesIn(Database()));
}

/// Makes the scene where that cannot succeed, and expects one message: what else goes wrong follows from the first.
void ExpectFailure(const std::string& database) {
    ::testing::internal::CaptureStderr();
    EXPECT_FALSE(RunDemo({database, ""}));
    const std::string text = ::testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::ranges::count(text, '\n'), 1) << text;
}

TEST(DemoFailure, LeavesWhatStandsInTheWay) {
    CTempFolder folder;
    testing::WriteBytes(folder / "Demo.scene", std::vector<std::uint8_t>{1});
    ExpectFailure(folder.Path().string());
    EXPECT_EQ(FilesIn(folder.Path()), (FileTree{{"Demo.scene", {1}}}));
}

TEST(DemoFailure, LeavesNoHalfScene) {
    CTempFolder folder;
    const char* usual = std::getenv("TMPDIR");
    const std::string before = usual == nullptr ? "" : usual;
    const Path startedIn = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path());
    ::setenv("TMPDIR", "/proc", 1); // no place for the files to be imported
    ExpectFailure((folder / "Database").string());
    usual == nullptr ? ::unsetenv("TMPDIR") : ::setenv("TMPDIR", before.c_str(), 1);
    std::filesystem::current_path(startedIn);
    EXPECT_EQ(FilesIn(folder.Path()), FileTree{}) << "nor anything where the program was started";
    EXPECT_TRUE(std::filesystem::is_empty(folder / "Database"));
}

} // namespace
} // namespace velmor
