#include "TestScene.h"

#include "image/import/ImageReaders.h"
#include "render/FinalRender.h"

#include <algorithm>

namespace velmor {
namespace {

using testing::CTempFolder;
using testing::CTestScene;
using testing::ReadBytes;
using testing::WriteBytes;

class FinalRender : public ::testing::Test {
protected:
    CRenderJob Job(RenderFormat format) {
        CRenderJob job{{scene.data, scene.folder, true}, {}, {}};
        job.settings.levels = AllLevels(scene.data.xsheet);
        for (int frame = 0; frame < CTestScene::frames; ++frame)
            job.settings.frames.push_back(frame);
        job.settings.format = format;
        job.settings.target = folder / "out";
        return job;
    }

    CRenderOutcome Render(const CRenderJob& job) {
        return RenderToDisk(job, cache, progress, [] { return true; });
    }

    CFrameBuffer Frame(int frame, ColorRef background) {
        CFrameRequest request = RequestFrame({scene.data, scene.folder, true}, AllLevels(scene.data.xsheet), frame,
                                             scene.data.camera.At(frame), {{64, 48}, {64, 48}, 1});
        request.background = background;
        CFrameBuffer buffer;
        EXPECT_TRUE(ComposeFrame(request, cache, buffer, false));
        return buffer;
    }

    CTempFolder folder;
    CTestScene scene{folder.Path()};
    CImageCache cache{1 << 24};
    CNoProgress progress;
};

TEST_F(FinalRender, NumberedFramesHoldTheComposedPixels) {
    for (const RenderFormat format : {RenderFormat::Targa, RenderFormat::Bitmap}) {
        const CRenderJob job = Job(format);
        ASSERT_EQ(Render(job).end, RenderEnd::Complete);
        for (const int frame : {0, 9}) {
            const Path path = RenderFrameFile(job.settings, frame);
            CCelImg read;
            ASSERT_TRUE(format == RenderFormat::Targa ? ReadTargaPicture(read, path, "x")
                                                      : ReadBitmapPicture(read, path, "x"));
            const CFrameBuffer expected = Frame(frame, scene.data.geometry.background);
            for (int y = 0; y < 48; ++y)
                for (int x = 0; x < 64; ++x) {
                    const std::uint8_t* pixel = &expected.pixels[static_cast<std::size_t>(y * 64 + x) * 3];
                    ASSERT_EQ(read.ColorAt(x, y), (CColor{pixel[0], pixel[1], pixel[2], 255})) << x << ' ' << y;
                }
        }
    }
    EXPECT_TRUE(FileExists(folder / "out0001.tga"));
    EXPECT_TRUE(FileExists(folder / "out0010.bmp"));
}

TEST_F(FinalRender, TransparentFramesLaidOverTheBackgroundGiveTheFrame) {
    for (const int frame : {0, 4, 9}) {
        CFrameBuffer colors = Frame(frame, 0);
        const AlphaPlane alpha = SeparateBackground(colors, Frame(frame, MakeColorRef(255, 255, 255)));
        const CFrameBuffer expected = Frame(frame, MakeColorRef(40, 160, 90));
        if (frame == 0) { // the picture is smaller than the frame
            EXPECT_GT(std::count(alpha.begin(), alpha.end(), 0), 100);
        }
        for (std::size_t i = 0; i < alpha.size(); ++i)
            for (std::size_t c = 0; c < 3; ++c) {
                const int background = std::array{90, 160, 40}[c];
                const int laid = (colors.pixels[i * 3 + c] * alpha[i] + background * (255 - alpha[i])) / 255;
                ASSERT_NEAR(laid, expected.pixels[i * 3 + c], 4);
            }
    }
}

TEST_F(FinalRender, RangesDividedAmongProcessesAndResumedRendersGiveTheSameBytes) {
    CRenderJob whole = Job(RenderFormat::Png);
    ASSERT_EQ(Render(whole).framesWritten, 10);
    CRenderJob part = whole;
    part.settings.target = folder / "part";
    for (const std::vector<int>& range : {std::vector{0, 1, 2, 3}, std::vector{4, 5, 6, 7, 8, 9}}) {
        part.settings.frames = range;
        ASSERT_EQ(Render(part).end, RenderEnd::Complete);
    }
    for (int frame = 0; frame < 10; ++frame)
        EXPECT_EQ(ReadBytes(RenderFrameFile(part.settings, frame)),
                  ReadBytes(RenderFrameFile(whole.settings, frame)));

    static_cast<void>(RemoveFile(RenderFrameFile(whole.settings, 3)));
    const auto before = IdentifyFile(RenderFrameFile(whole.settings, 4));
    whole.settings.resume = true;
    EXPECT_EQ(Render(whole).framesWritten, 1);
    EXPECT_EQ(IdentifyFile(RenderFrameFile(whole.settings, 4)), before);
    EXPECT_EQ(ReadBytes(RenderFrameFile(whole.settings, 3)), ReadBytes(RenderFrameFile(part.settings, 3)));
}

TEST_F(FinalRender, FailuresSayWhyAndLeaveNothingHalfWritten) {
    static_cast<void>(RemoveFile(scene.folder / "A" / "2.bit"));
    const CRenderOutcome missing = Render(Job(RenderFormat::Avi));
    EXPECT_EQ(missing.end, RenderEnd::Failed);
    EXPECT_EQ(missing.message,
              "Unable to open cel file for reading :: Reading file ->" + Utf8Of(scene.folder / "A" / "2.bit"));
    EXPECT_FALSE(FileExists(folder / "out"));

    CRenderJob nowhere = Job(RenderFormat::Png);
    nowhere.settings.target = folder / "missing" / "out";
    const CRenderOutcome refused = Render(nowhere);
    EXPECT_EQ(refused.end, RenderEnd::Failed);
    EXPECT_FALSE(refused.message.empty());
    EXPECT_EQ(ListFiles(folder.Path(), "").size(), 0U);
}

TEST_F(FinalRender, FinishedFramesJoinToTheMovieThatOneRenderMakes) {
    scene.data.geometry.width = 62; // which an AVI makes 64
    for (const RenderFormat format : {RenderFormat::Avi, RenderFormat::Mp4})
        for (const RenderFormat of : {RenderFormat::Png, RenderFormat::Targa, RenderFormat::Bitmap}) {
            std::vector<std::uint8_t> sound(30000, 100);
            CRenderJob movie = Job(format);
            movie.settings.scaling = 75;
            movie.settings.frames = {1, 3, 5, 9};
            movie.settings.step = 2;
            movie.sound = sound;
            ASSERT_EQ(Render(movie).end, RenderEnd::Complete);

            CRenderJob frames = movie;
            frames.settings.format = of;
            frames.settings.target = folder / "frame";
            frames.settings.asOfAvi = format == RenderFormat::Avi;
            ASSERT_EQ(Render(frames).end, RenderEnd::Complete);
            CRenderJob joined = movie;
            joined.settings.target = folder / "joined";
            joined.finished = {folder / "frame", of};
            ASSERT_EQ(Render(joined).end, RenderEnd::Complete);
            EXPECT_EQ(ReadBytes(folder / "joined"), ReadBytes(folder / "out"));

            static_cast<void>(RemoveFile(RenderFrameFile(frames.settings, 5)));
            static_cast<void>(RemoveFile(folder / "joined"));
            const CRenderOutcome missing = Render(joined);
            EXPECT_EQ(missing.fault, RenderFault::Input);
            EXPECT_EQ(missing.message, Utf8Of(RenderFrameFile(frames.settings, 5)) + " is missing");
            EXPECT_FALSE(FileExists(folder / "joined"));
        }
}

TEST_F(FinalRender, OfTheFramesThereOnlyWholeOnesAreKept) {
    for (const RenderFormat format : {RenderFormat::Png, RenderFormat::Targa, RenderFormat::Bitmap}) {
        CRenderJob job = Job(format);
        ASSERT_EQ(Render(job).end, RenderEnd::Complete);
        std::map<int, std::vector<std::uint8_t>> whole;
        for (const int frame : job.settings.frames)
            whole[frame] = ReadBytes(RenderFrameFile(job.settings, frame));
        const auto damage = [&](int frame, auto change) {
            std::vector<std::uint8_t> bytes = whole[frame];
            change(bytes);
            WriteBytes(RenderFrameFile(job.settings, frame), bytes);
        };
        damage(1, [](auto& bytes) { bytes.clear(); });
        damage(2, [](auto& bytes) { bytes.pop_back(); });
        damage(3, [](auto& bytes) { bytes.resize(bytes.size() / 2); });
        CRenderJob other = job; // of another size
        other.settings.scaling = 50;
        other.settings.frames = {4};
        ASSERT_EQ(Render(other).end, RenderEnd::Complete);

        job.settings.resume = true;
        job.settings.onlyWhole = true;
        const CRenderOutcome outcome = Render(job);
        EXPECT_EQ(outcome.framesWritten, 4);
        EXPECT_EQ(outcome.framesKept, 6);
        for (const int frame : job.settings.frames)
            EXPECT_EQ(ReadBytes(RenderFrameFile(job.settings, frame)), whole[frame]) << frame;
    }
}

TEST_F(FinalRender, HeldFramesAreWhatEachIsByItself) {
    const int held[CTestScene::frames] = {0, 0, 1, 1, 2, 2, 2, 0, 0, 3};
    for (int frame = 0; frame < CTestScene::frames; ++frame) {
        scene.Expose(0, frame, "A", held[frame] == 3 ? "2" : "1", 12 + 10 * held[frame], 24);
        scene.data.camera.MutableAt(frame) = {0, 0, 0.1, 1.2};
    }
    // Takes files away as they appear, as a program might that sends them on.
    class CTaking : public IProgress {
    public:
        explicit CTaking(const CRenderJob& of) : job(of) {}
        void Report(int, const std::string&) override {}
        void FrameDone(int frame) override {
            const Path path = RenderFrameFile(job.settings, frame - 1);
            taken.push_back(ReadBytes(path));
            if (frame % 3 == 0)
                static_cast<void>(RemoveFile(path));
            else if (frame % 3 == 1)
                WriteBytes(path, std::vector<std::uint8_t>{1, 2, 3});
        }
        bool TakeStopRequest() override { return false; }
        const CRenderJob& job;
        std::vector<std::vector<std::uint8_t>> taken;
    };
    for (const bool transparent : {false, true}) {
        CRenderJob job = Job(RenderFormat::Png);
        job.settings.transparentBackground = transparent;
        CTaking taking(job);
        ASSERT_EQ(RenderToDisk(job, cache, taking, [] { return true; }).end, RenderEnd::Complete);
        for (int frame = 0; frame < CTestScene::frames; ++frame) {
            CRenderJob one = job;
            one.settings.frames = {frame};
            ASSERT_EQ(Render(one).end, RenderEnd::Complete);
            EXPECT_EQ(taking.taken[static_cast<std::size_t>(frame)],
                      ReadBytes(RenderFrameFile(job.settings, frame)))
                << frame;
        }
    }

    scene.Expose(0, 8, "A", "2", 42, 24);
    WriteBytes(scene.folder / "A" / "2.bit", std::vector<std::uint8_t>{1, 2, 3});
    CRenderJob broken = Job(RenderFormat::Bitmap);
    broken.settings.keepGoing = true;
    EXPECT_EQ(Render(broken).framesFailed, 2);
}

TEST_F(FinalRender, ABrokenCelFailsItsFramesAlone) {
    WriteBytes(scene.folder / "A" / "2.bit", std::vector<std::uint8_t>{1, 2, 3});
    CRenderJob job = Job(RenderFormat::Bitmap);
    job.settings.keepGoing = true;
    const CRenderOutcome broken = Render(job);
    EXPECT_EQ(broken.end, RenderEnd::Failed);
    EXPECT_EQ(broken.fault, RenderFault::Frame);
    EXPECT_EQ(broken.framesWritten, 5);
    EXPECT_EQ(broken.framesFailed, 5);
    EXPECT_EQ(ListFiles(folder.Path(), ".bmp").size(), 5U);

    static_cast<void>(RemoveFile(scene.folder / "A" / "1.bit"));
    EXPECT_EQ(Render(job).fault, RenderFault::Input);
    job.settings.target = folder / "missing" / "out";
    job.settings.levels = {2};
    const CRenderOutcome unwritable = Render(job);
    EXPECT_EQ(unwritable.fault, RenderFault::Output);
    EXPECT_EQ(unwritable.framesFailed, 0);
}

} // namespace
} // namespace velmor
