#include "DecodedMovie.h"
#include "TestScene.h"

#include "platform/movie/AviReader.h"
#include "platform/movie/MovieWriter.h"
#include "platform/movie/SoundReader.h"
#include "render/Compressors.h"
#include "render/FinalRender.h"
#include "render/Flipbook.h"

#include <algorithm>
#include <cmath>
#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace velmor {
namespace {

using testing::CDecodedMovie;
using testing::CTempFolder;
using testing::CTestScene;
using testing::DecodeMovie;
using testing::ReadBytes;

double MeanDifference(std::span<const std::uint8_t> a, std::span<const std::uint8_t> b) {
    EXPECT_EQ(a.size(), b.size());
    double sum = 0;
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i)
        sum += std::abs(a[i] - b[i]);
    return sum / static_cast<double>(a.size());
}

std::string TextOfFile(const Path& path) {
    const auto bytes = ReadBytes(path);
    return {bytes.begin(), bytes.end()};
}

/// Renders the test scene, with a tone as its sound, into movies of all kinds.
class RenderMovie : public ::testing::Test {
protected:
    RenderMovie() {
        for (std::size_t i = 0; i < tone.size(); ++i)
            tone[i] = static_cast<std::uint8_t>(128 + 100 * std::sin(static_cast<double>(i) * 0.05));
    }

    CRenderJob Job(RenderFormat format, const std::string& name) {
        CRenderJob job{{scene.data, scene.folder, true}, {}, tone};
        job.settings.levels = AllLevels(scene.data.xsheet);
        for (int frame = 0; frame < CTestScene::frames; ++frame)
            job.settings.frames.push_back(frame);
        job.settings.format = format;
        job.settings.target = RenderTargetOf(folder / name, format);
        return job;
    }

    CDecodedMovie Render(const CRenderJob& job) {
        CImageCache cache(1 << 24);
        const CRenderOutcome outcome = RenderToDisk(job, cache, progress, [] { return true; });
        EXPECT_EQ(outcome.end, RenderEnd::Complete) << outcome.message;
        const std::optional<CDecodedMovie> movie = DecodeMovie(job.settings.target);
        EXPECT_TRUE(movie);
        return movie.value_or(CDecodedMovie{});
    }

    std::vector<std::uint8_t> Composed(int frame) {
        CImageCache cache(1 << 24);
        const CSize size{64, 48};
        const CRenderJob job = Job(RenderFormat::Avi, "unused");
        CFrameBuffer buffer;
        EXPECT_TRUE(ComposeFrame(
            RequestFrame(job.shot, job.settings.levels, frame, job.shot.scene.camera.At(frame), {size, size, 1}),
            cache, buffer, false));
        return buffer.pixels;
    }

    std::vector<std::uint8_t> SoundOf(const Path& path) {
        CAviReader reader;
        std::vector<std::uint8_t> samples;
        EXPECT_EQ(reader.Open(path), MovieError::None);
        EXPECT_EQ(reader.ReadSound(22050, samples), MovieError::None);
        return samples;
    }

    CTempFolder folder;
    CTestScene scene{folder / "db"};
    std::vector<std::uint8_t> tone = std::vector<std::uint8_t>(22050);
    CNoProgress progress;
};

TEST_F(RenderMovie, EveryCompressorKeepsThePicturesThatItPromises) {
    const std::vector<CCompressor> compressors = AvailableCompressors();
    ASSERT_EQ(compressors.front().name, defaultCompressor);
    ASSERT_GE(compressors.size(), 3U);
    const std::vector<std::uint8_t> sound = CutSound(tone, 24, 0, 10);
    for (const CCompressor& compressor : compressors) {
        SCOPED_TRACE(compressor.name);
        CRenderJob job = Job(RenderFormat::Avi, std::string(compressor.name));
        job.settings.compressor = compressor.encoder;
        const CDecodedMovie movie = Render(job);
        EXPECT_EQ(movie.videoCodec, compressor.encoder);
        EXPECT_EQ(movie.rate, 24);
        ASSERT_EQ(movie.frames.size(), 10U);
        for (int frame = 0; frame < 10; ++frame) {
            const auto& decoded = movie.frames[static_cast<std::size_t>(frame)];
            EXPECT_TRUE(decoded.isKeyFrame);
            const double difference = MeanDifference(decoded.pixels, Composed(frame));
            EXPECT_LE(difference, compressor.hasQuality ? 8 : 0);
            EXPECT_EQ(difference > 0, compressor.hasQuality);
        }
        EXPECT_EQ(movie.sound, sound);
        EXPECT_EQ(movie.soundRate, 22050);
    }
}

TEST_F(RenderMovie, CompressorsAreFoundWhateverTheirCase) {
    ASSERT_NE(FindCompressor("msvc"), nullptr);
    EXPECT_TRUE(FindCompressor("msvc")->isOurs);
    EXPECT_EQ(FindCompressor("UNCOMPRESSED"), FindCompressor("rawvideo"));
    EXPECT_EQ(FindCompressor("MSV"), nullptr);
    EXPECT_EQ(FindCompressor(""), nullptr);
}

TEST_F(RenderMovie, LossyMoviesHeedTheQuality) {
    for (const auto& [format, compressor] :
         {std::pair{RenderFormat::Mp4, ""}, {RenderFormat::Avi, "mjpeg"}, {RenderFormat::Avi, "msvc"}}) {
        CRenderJob job = Job(format, "q");
        job.settings.compressor = compressor;
        const double best = MeanDifference(Render(job).frames[5].pixels, Composed(5));
        job.settings.quality = 1000;
        EXPECT_GT(MeanDifference(Render(job).frames[5].pixels, Composed(5)), best) << compressor;
    }
}

TEST_F(RenderMovie, Mp4HoldsEachFrameForItsStepAndStaysInTimeWithItsSound) {
    CRenderJob job = Job(RenderFormat::Mp4, "m");
    job.settings.frames = {1, 4, 7};
    job.settings.step = 3;
    const CDecodedMovie movie = Render(job);
    EXPECT_EQ(movie.videoCodec, "h264");
    EXPECT_EQ(movie.rate, 24);
    ASSERT_EQ(movie.frames.size(), 9U);
    for (std::size_t i = 0; i < 9; ++i) {
        EXPECT_EQ(movie.frames[i].position, static_cast<int>(i));
        EXPECT_LT(MeanDifference(movie.frames[i].pixels, Composed(job.settings.frames[i / 3])), 6) << i;
    }
    EXPECT_EQ(movie.soundCodec, "aac");
    EXPECT_EQ(movie.soundRate, 22050);
    EXPECT_EQ(movie.soundChannels, 1);
    const std::vector<std::uint8_t> expected = CutSound(tone, 24, 1, 9);
    std::vector<std::uint8_t> sound = SoundOf(job.settings.target);
    ASSERT_GE(sound.size(), expected.size());
    sound.resize(expected.size());
    EXPECT_LT(MeanDifference(sound, expected), 4); // a shift by a few samples would be far more

    const std::string bytes = TextOfFile(job.settings.target);
    EXPECT_LT(bytes.find("moov"), bytes.find("mdat"));
}

TEST_F(RenderMovie, Mp4TakesTheMixedSoundInItsFullQuality) {
    CRenderJob job = Job(RenderFormat::Mp4, "m");
    job.settings.frames = {2, 3, 4, 5, 6, 7};
    CMixedSound mixed;
    for (std::size_t i = 0; i < MixedBefore(CTestScene::frames, 24); ++i) {
        mixed.stereo.push_back(static_cast<float>(0.5 * std::sin(static_cast<double>(i) * 0.05)));
        mixed.stereo.push_back(static_cast<float>(-0.25 * std::sin(static_cast<double>(i) * 0.31)));
    }
    job.mixed = mixed;
    const CDecodedMovie movie = Render(job);
    EXPECT_EQ(movie.soundRate, mixRate);
    EXPECT_EQ(movie.soundChannels, 2);
    CSoundReader reader;
    ASSERT_EQ(reader.Open(job.settings.target), MovieError::None);
    std::vector<float> heard;
    while (reader.Read({mixRate, mixChannels}, heard))
        continue;
    const std::size_t from = MixedBefore(2, 24) * 2;
    ASSERT_GE(heard.size(), MixedBefore(6, 24) * 2);
    for (std::size_t i = 4000; i < MixedBefore(6, 24) * 2 - 4000; ++i)
        ASSERT_NEAR(heard[i], mixed.stereo[from + i], 0.06) << i;
    job.settings.format = RenderFormat::Avi;
    job.settings.target = RenderTargetOf(folder / "m", RenderFormat::Avi);
    EXPECT_EQ(Render(job).soundRate, 22050) << "an AVI has the track";
}

TEST_F(RenderMovie, Mp4WithoutSoundAndWithOddSizesIsFilledUpWithBackground) {
    CRenderJob job = Job(RenderFormat::Mp4, "odd");
    job.sound.reset();
    job.settings.scaling = 51; // 32 x 24, made 33 x 25 below
    scene.data.geometry.width = 65;
    scene.data.geometry.height = 50;
    ASSERT_EQ(RenderGeometryOf(job.settings, {65, 50}).output, (CSize{33, 25}));
    const CDecodedMovie movie = Render(job);
    EXPECT_EQ(movie.width, 34);
    EXPECT_EQ(movie.height, 26);
    EXPECT_EQ(movie.soundCodec, "");
    const std::vector<std::uint8_t>& pixels = movie.frames.front().pixels;
    const std::array<int, 3> background = {230, 240, 250};
    for (std::size_t c = 0; c < 3; ++c) { // the lower right corner, where both lines meet
        EXPECT_NEAR(pixels[33 * 3 + c], background[c], 30);
        EXPECT_NEAR(pixels[c], background[c], 30);
    }
}

// What memory holds before anybody has written to it differs from run to run; an encoder must not see it.
void FillFreshMemoryWith([[maybe_unused]] int value) {
#ifdef __GLIBC__
    ::mallopt(M_PERTURB, value);
#endif
}

TEST_F(RenderMovie, TheSameInputGivesTheSameBytes) {
    for (const RenderFormat format : {RenderFormat::Mp4, RenderFormat::Avi}) {
        CRenderJob first = Job(format, "first");
        CRenderJob second = Job(format, "second");
        first.settings.compressor = second.settings.compressor = "mjpeg";
        FillFreshMemoryWith(17);
        Render(first);
        FillFreshMemoryWith(200);
        Render(second);
        FillFreshMemoryWith(0);
        EXPECT_EQ(ReadBytes(first.settings.target), ReadBytes(second.settings.target));
    }
}

class CStopAtThirdFrame final : public IProgress {
public:
    void Report(int, const std::string&) override { ++m_reports; }
    bool TakeStopRequest() override { return m_reports == 3; }

private:
    int m_reports = 0;
};

TEST_F(RenderMovie, AStoppedMovieEndsWithItsSound) {
    for (const RenderFormat format : {RenderFormat::Mp4, RenderFormat::Avi}) {
        CRenderJob job = Job(format, "stopped");
        job.settings.compressor = "ffv1";
        CImageCache cache(1 << 24);
        CStopAtThirdFrame stop;
        const CRenderOutcome outcome = RenderToDisk(job, cache, stop, [] { return true; });
        EXPECT_EQ(outcome.end, RenderEnd::Stopped);
        EXPECT_EQ(outcome.message, "Stopped after Frame : 3");
        const std::optional<CDecodedMovie> movie = DecodeMovie(job.settings.target);
        ASSERT_TRUE(movie);
        EXPECT_EQ(movie->frames.size(), 3U);
        const std::size_t samples = SoundOf(job.settings.target).size();
        EXPECT_GE(samples, 3U * 22050 / 24);
        EXPECT_LT(samples, 3U * 22050 / 24 + 2048); // the last frame of AAC may be filled up
    }
}

TEST_F(RenderMovie, GapsOfAnAviStayEmpty) {
    CRenderJob job = Job(RenderFormat::Avi, "gaps");
    job.settings.compressor = "Uncompressed";
    job.settings.frames = {0, 3, 9};
    job.settings.step = 3;
    const CDecodedMovie movie = Render(job);
    ASSERT_EQ(movie.frames.size(), 3U);
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(movie.frames[i].position, job.settings.frames[i]);
    EXPECT_EQ(movie.videoDuration, 10);
}

TEST_F(RenderMovie, WhatTheSystemCannotDoIsRefusedAndLeavesNothing) {
    const Path target = folder / "m.mp4";
    CMovieWriter writer;
    EXPECT_EQ(writer.Open(target, {MovieContainer::Mp4, "nosuch", 64, 48}), MovieWriteError::NoEncoder);
    EXPECT_EQ(writer.Open(target, {MovieContainer::Mp4, "aac", 64, 48}), MovieWriteError::NoEncoder);
    EXPECT_EQ(writer.Open(folder / "none" / "m.mp4", {MovieContainer::Mp4, "", 64, 48}), MovieWriteError::FileOpen);
    EXPECT_EQ(writer.WriteFrame(0, {}), MovieWriteError::FileWrite); // it is closed

    CImageCache cache(1 << 24);
    CRenderJob unknown = Job(RenderFormat::Avi, "m");
    unknown.settings.compressor = "nosuch";
    EXPECT_EQ(RenderToDisk(unknown, cache, progress, {}).message, "A suitable compressor cannot be found.");
    scene.data.geometry.width = 20000;
    EXPECT_EQ(RenderToDisk(Job(RenderFormat::Mp4, "m"), cache, progress, {}).message,
              "The system does not support the required compression");
    EXPECT_TRUE(ListFiles(folder.Path(), "").empty());
}

TEST_F(RenderMovie, AMovieThatIsGivenUpLeavesTheOldOne) {
    const Path target = folder / "m.mp4";
    for (const bool close : {true, false}) {
        CMovieWriter writer;
        ASSERT_EQ(writer.Open(target, {MovieContainer::Mp4, "", 64, 48}), MovieWriteError::None);
        const std::vector<std::uint8_t> frame(64 * 48 * 3, close ? 40 : 90);
        ASSERT_EQ(writer.WriteFrame(0, frame), MovieWriteError::None);
        if (close)
            ASSERT_EQ(writer.Close(5), MovieWriteError::None);
        else
            EXPECT_EQ(writer.WriteFrame(0, frame), MovieWriteError::FileWrite); // not a later position
    }
    EXPECT_EQ(ListFiles(folder.Path(), ""), std::vector<std::string>{"m.mp4"});
    const std::optional<CDecodedMovie> kept = DecodeMovie(target);
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->frames.size(), 5U);
    EXPECT_NEAR(kept->frames.back().pixels[100], 40, 3);
}

} // namespace
} // namespace velmor
