#include "DecodedMovie.h"
#include "TestScene.h"

#include "render/Flipbook.h"
#include "sound/SoundTrack.h"

#include <algorithm>
#include <cmath>

namespace velmor {
namespace {

using testing::CDecodedMovie;
using testing::CTempFolder;
using testing::CTestScene;
using testing::DecodeMovie;
using testing::ReadBytes;
using testing::WriteBytes;

TEST(FlipbookSettings, AreAcceptedOrRefusedWithTheirTexts) {
    const auto check = [](std::vector<int> levels, int start, int end, int step) {
        CFlipbookSettings settings;
        settings.levels = std::move(levels);
        settings.firstFrame = start;
        settings.lastFrame = end;
        settings.step = step;
        return CheckFlipbookSettings(settings, 10).Message();
    };
    EXPECT_EQ(check({0}, 1, 10, 4), "");
    EXPECT_EQ(check({0}, 10, 10, 1), "");
    EXPECT_EQ(check({0}, 1, 2, 1), "");
    EXPECT_EQ(check({}, 1, 10, 1), "You should select at least one level to generate a flipbook!");
    for (const auto& [start, end] : {std::pair{0, 5}, {5, 4}, {1, 11}, {11, 11}})
        EXPECT_EQ(check({0}, start, end, 1), "Invalid start or end frame!");
    for (const int step : {0, -1, 5, 6})
        EXPECT_EQ(check({0}, 1, 10, step), "Invalid step value!");
    EXPECT_EQ(check({0}, 1, 2, 2), "Invalid step value!");
}

TEST(FlipbookSettings, PercentagesRunFromTenToAHundred) {
    const auto isAccepted = [](int scaling, int quality) {
        return static_cast<bool>(CheckFlipbookSettings({{0}, 1, 10, 1, scaling, quality, false}, 10));
    };
    EXPECT_TRUE(isAccepted(10, 100));
    EXPECT_TRUE(isAccepted(100, 10));
    for (const int percent : {9, 101, 0, -50}) {
        EXPECT_FALSE(isAccepted(percent, 50));
        EXPECT_FALSE(isAccepted(50, percent));
    }
}

TEST(FlipbookSettings, SizesAreScaledAndRaisedToAMultipleOfFour) {
    const auto size = [](int width, int height, int scaling) {
        return FlipbookGeometryOf({width, height}, scaling).output;
    };
    EXPECT_EQ(size(640, 480, 50), (CSize{324, 243}));
    EXPECT_EQ(size(500, 400, 10), (CSize{52, 41}));
    EXPECT_EQ(size(768, 576, 100), (CSize{772, 579}));
    EXPECT_EQ(size(10, 2048, 10).width, 4);
    EXPECT_EQ(size(2048, 10, 10).height, 1);
    EXPECT_DOUBLE_EQ(FlipbookGeometryOf({640, 480}, 50).factor, 0.50625);
}

TEST(FlipbookSound, IsCutFromTheTrackAndFilledWithSilence) {
    std::vector<std::uint8_t> track(918 * 4);
    for (std::size_t i = 0; i < track.size(); ++i)
        track[i] = static_cast<std::uint8_t>(i);
    const auto cut = CutSound(track, 24, 2, 10);
    ASSERT_EQ(cut.size(), 9180U);
    EXPECT_TRUE(std::equal(track.begin() + 918 * 2, track.end(), cut.begin()));
    EXPECT_TRUE(std::all_of(cut.begin() + 918 * 2, cut.end(), [](std::uint8_t s) { return s == 128; }));
    EXPECT_EQ(CutSound(track, 24, 50, 1), std::vector<std::uint8_t>(918, 128));
}

class Flipbook : public ::testing::Test {
protected:
    CFlipbookJob Job() {
        CFlipbookJob job{output, {scene.data, scene.folder, true}, {}, 0, 0, {}};
        job.settings.levels = {0, 2};
        job.settings.lastFrame = CTestScene::frames;
        job.settings.scaling = 100;
        job.settings.quality = 100;
        return job;
    }

    CFlipbookOutcome Generate(const CFlipbookJob& job) {
        return GenerateFlipbook(job, cache, progress, [] { return true; });
    }

    // Mean distance of a decoded frame from the composed one, whose rows the decoder gives above the padding.
    double DistanceFrom(const CFlipbookJob& job, const CDecodedMovie& movie, std::size_t index, int frame) {
        CFrameBuffer expected;
        EXPECT_TRUE(ComposeFrame(RequestFlipbookFrame(job, frame), cache, expected, false));
        const auto rowBytes = static_cast<std::size_t>(expected.width) * 3;
        const std::size_t padding = static_cast<std::size_t>(movie.height - expected.height) * rowBytes;
        double sum = 0;
        for (std::size_t i = 0; i < expected.pixels.size(); ++i)
            sum += std::abs(expected.pixels[i] - movie.frames[index].pixels[padding + i]);
        return sum / static_cast<double>(expected.pixels.size());
    }

    CTempFolder folder;
    CTestScene scene{folder.Path()};
    const Path output = folder / "flipbook.avi";
    CImageCache cache{1 << 24};
    CNoProgress progress;
};

TEST_F(Flipbook, HoldsTheComposedFramesAndTheSound) {
    std::vector<std::uint8_t> track(918 * CTestScene::frames);
    for (std::size_t i = 0; i < track.size(); ++i)
        track[i] = static_cast<std::uint8_t>(i * 3);
    CFlipbookJob job = Job();
    job.settings.firstFrame = 3;
    job.sound = track;
    job.soundFrame = 1; // the xsheet's selection, not the movie's start, says where the sound begins
    ASSERT_EQ(Generate(job).end, FlipbookEnd::Complete);
    const auto movie = DecodeMovie(output);
    ASSERT_TRUE(movie);
    EXPECT_EQ(movie->width, 68);
    EXPECT_EQ(movie->height, 52); // 51 rows, coded in fours
    EXPECT_DOUBLE_EQ(movie->rate, 24);
    ASSERT_EQ(movie->frames.size(), 8U);
    for (int i = 0; i < 8; ++i)
        EXPECT_LT(DistanceFrom(job, *movie, static_cast<std::size_t>(i), i + 2), 4.0) << i;
    EXPECT_GT(DistanceFrom(job, *movie, 0, 9), 6.0);
    EXPECT_EQ(movie->sound, CutSound(track, 24, 1, 8));
}

TEST_F(Flipbook, HeldDrawingsStandAsLongAsTheyAreExposed) {
    // On twos, then one held for three frames, and back to the first.
    const int held[CTestScene::frames] = {0, 0, 1, 1, 2, 2, 2, 0, 0, 3};
    for (int frame = 0; frame < CTestScene::frames; ++frame) {
        scene.Expose(0, frame, "A", "1", 12 + 10 * held[frame], 24);
        scene.data.camera.MutableAt(frame) = {0, 0, 0.1, 1.2};
    }
    ASSERT_EQ(Generate(Job()).end, FlipbookEnd::Complete);
    const auto movie = DecodeMovie(output);
    ASSERT_TRUE(movie);
    ASSERT_EQ(movie->frames.size(), std::size(held));
    for (std::size_t i = 0; i < std::size(held); ++i) {
        EXPECT_LT(DistanceFrom(Job(), *movie, i, static_cast<int>(i)), 4.0) << i;
        const std::size_t before = i > 0 ? i - 1 : i;
        EXPECT_EQ(movie->frames[i].pixels == movie->frames[before].pixels, held[i] == held[before]) << i;
    }
}

TEST_F(Flipbook, StepsLeaveEmptySamplesAndLowerTheRate) {
    CFlipbookJob job = Job();
    job.settings.step = 4;
    ASSERT_EQ(Generate(job).end, FlipbookEnd::Complete);
    const auto movie = DecodeMovie(output);
    ASSERT_TRUE(movie);
    EXPECT_DOUBLE_EQ(movie->rate, 6);
    ASSERT_EQ(movie->frames.size(), 3U);
    EXPECT_EQ(movie->frames[1].position, 4);
    EXPECT_EQ(movie->frames[2].position, 8);
    EXPECT_EQ(movie->videoDuration, 9);
    EXPECT_EQ(movie->soundCodec, "");
}

TEST_F(Flipbook, PanAndTiltAreTheCursorFramesWhileTheZoomFollows) {
    CFlipbookJob job = Job();
    job.cursorFrame = 7;
    const CFrameRequest request = RequestFlipbookFrame(job, 2);
    CCameraFrame camera = scene.data.camera.At(7);
    camera.zoom = scene.data.camera.At(2).zoom;
    // By hand: 68 x 51 pixels, moved by the half difference of the sizes, about the output's integer centre.
    const CXSheetCell& cel = scene.data.xsheet.Cell(0, 2);
    const double factor = 68.0 / 64;
    const double x = cel.PosX() + camera.panX + (68 - 64) / 2.0 - 34;
    const double y = cel.PosY() + camera.panY + (51 - 48) / 2.0 - 25;
    const double c = std::cos(camera.rotation);
    const double s = std::sin(camera.rotation);
    const CPlacement& top = request.layers.back().placement;
    EXPECT_NEAR(top.centreX, camera.zoom * factor * (x * c + y * s) + 34, 1e-9);
    EXPECT_NEAR(top.centreY, camera.zoom * factor * (y * c - x * s) + 25, 1e-9);
    EXPECT_DOUBLE_EQ(top.scaleX, camera.zoom * factor);
    EXPECT_DOUBLE_EQ(top.angle, camera.rotation);
    EXPECT_EQ(request.layers.size(), 2U);
    EXPECT_EQ(request.layers.back().path.filename(), "1.bit"); // the first chosen level is on top
    EXPECT_EQ(request.bufferWidth, request.backgroundWidth);
}

TEST_F(Flipbook, StopsAfterTheFrameJustWrittenWhenTheUserAgrees) {
    class CStopAfter : public IProgress {
    public:
        void Report(int, const std::string& text) override { lastText = text; }
        void FrameDone(int frame) override { asked = frame >= 3; }
        bool TakeStopRequest() override { return std::exchange(asked, false); }
        std::string lastText;
        bool asked = false;
    } stopping;
    int questions = 0;
    const CFlipbookOutcome outcome = GenerateFlipbook(Job(), cache, stopping, [&] { return ++questions == 2; });
    EXPECT_EQ(outcome.end, FlipbookEnd::Stopped);
    EXPECT_EQ(outcome.messages, std::vector<std::string>{"Stopped after Frame : 4"});
    EXPECT_EQ(stopping.lastText, "Preparing Frame : 4");
    EXPECT_EQ(DecodeMovie(output)->frames.size(), 4U);
}

TEST_F(Flipbook, FailureKeepsThePreviousMovie) {
    ASSERT_EQ(Generate(Job()).end, FlipbookEnd::Complete);
    const auto before = ReadBytes(output);
    auto cel = ReadBytes(scene.folder / "A" / "2.bit");
    cel.resize(40);
    WriteBytes(scene.folder / "A" / "2.bit", cel);
    const CFlipbookOutcome outcome = Generate(Job());
    EXPECT_EQ(outcome.end, FlipbookEnd::Failed);
    EXPECT_EQ(outcome.messages,
              std::vector<std::string>{"Unable to read cel file :: Truncated cel file :: Reading file ->" +
                                       Utf8Of(scene.folder / "A" / "2.bit")});
    EXPECT_EQ(ReadBytes(output), before);

    CFlipbookJob nowhere = Job();
    nowhere.output = folder / "none" / "flipbook.avi";
    EXPECT_EQ(Generate(nowhere).messages.back(), "Unable to create an avi flipbook file");
}

} // namespace
} // namespace velmor
