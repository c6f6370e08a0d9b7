#include "TestScene.h"

#include "image/import/ImageReaders.h"
#include "render/FinalRender.h"

#include <algorithm>

namespace velmor {
namespace {

using testing::CTempFolder;
using testing::CTestScene;
using testing::ReadBytes;

class FinalRender : public ::testing::Test {
protected:
    CRenderJob Job(RenderFormat format) {
        CRenderJob job{{scene.data.xsheet, scene.data.geometry, scene.folder, true}, scene.data.camera, {}, {}};
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
        CFrameRequest request =
            RequestFrame({scene.data.xsheet, scene.data.geometry, scene.folder, true}, AllLevels(scene.data.xsheet),
                         frame, scene.data.camera.At(frame), {{64, 48}, {64, 48}, 1});
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

} // namespace
} // namespace velmor
