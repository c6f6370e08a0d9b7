#include "BenchImages.h"

#include "render/Flipbook.h"
#include "sound/SoundTrack.h"

#include <benchmark/benchmark.h>

// A whole flipbook: a panned picture under three cel levels of eight drawings each, held on twos, turning and
// growing, with a sound.

namespace velmor {
namespace {

constexpr int drawings = 8;
constexpr int celLevels = 3;

/// The scene on disk, and its sheet in memory.
class CFlipbookScene {
public:
    CFlipbookScene(CSize size, int frameCount) {
        data.geometry.width = size.width;
        data.geometry.height = size.height;
        data.xsheet = CXSheet(celLevels + 1, frameCount);
        CCelImg image;
        std::filesystem::create_directories(folder.Path() / "_Pictures_");
        static_cast<void>(image.CreatePicture(size.width * 3 / 2, size.height * 3 / 2,
                                              AssetFilePath(folder.Path(), picturesFolder, "back")));
        PaintLandscape(image);
        static_cast<void>(image.Save());
        for (int level = 0; level < celLevels; ++level)
            SaveDrawings(level, size);
        for (int frame = 0; frame < frameCount; ++frame)
            Expose(frame, size);
    }

    CBenchFolder folder;
    CScene data;

private:
    static std::string FolderOf(int level) { return std::to_string(level); }

    void SaveDrawings(int level, CSize size) {
        std::filesystem::create_directories(folder.Path() / FolderOf(level));
        for (int drawing = 1; drawing <= drawings; ++drawing) {
            CCelImg image;
            static_cast<void>(image.CreateCel(
                size.width, size.height, AssetFilePath(folder.Path(), FolderOf(level), std::to_string(drawing))));
            PaintCharacter(image, level * drawings + drawing);
            static_cast<void>(image.Save());
        }
    }

    void Expose(int frame, CSize size) {
        for (int level = 0; level < celLevels; ++level) {
            CXSheetCell& cel = data.xsheet.MutableCell(level, frame);
            const int drawing = frame / 2 % drawings + 1;
            static_cast<void>(cel.Set(folder.Path(), FolderOf(level), std::to_string(drawing), size));
            const double scale = 0.9 + 0.002 * frame + 0.05 * level;
            cel.SetTransform({size.width / 2.0 + level * 20, size.height / 2.0 - level * 10, scale, scale,
                              0.3 - 0.005 * frame - 0.1 * level});
        }
        static_cast<void>(data.xsheet.MutableCell(celLevels, frame)
                              .Set(folder.Path(), std::string(picturesFolder), "back", size));
        data.camera.MutableAt(frame) = {0.3 * frame, 0.1 * frame, 0, 1 + 0.002 * frame};
    }
};

void MakeFlipbook(benchmark::State& state, CSize size, int frameCount) {
    const CFlipbookScene scene(size, frameCount);
    const std::vector<std::uint8_t> track(static_cast<std::size_t>(frameCount * SamplesPerFrame(25)), 100);
    CFlipbookJob job{scene.folder.Path() / "flipbook.avi",
                     {scene.data, scene.folder.Path(), state.range(1) != 0},
                     {},
                     0,
                     0,
                     track};
    job.settings.levels = AllLevels(scene.data.xsheet);
    job.settings.lastFrame = frameCount;
    job.settings.scaling = static_cast<int>(state.range(0));
    CNoProgress progress;
    for (auto _ : state) {
        CImageCache cache(CImageCache::usualBytes);
        const CFlipbookOutcome outcome = GenerateFlipbook(job, cache, progress, [] { return true; });
        if (outcome.end != FlipbookEnd::Complete)
            state.SkipWithError("the flipbook was not made");
    }
}

void FlipbookArguments(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgNames({"scaling", "antialias"})
        ->ArgsProduct({{100, 50}, {0, 1}})
        ->UseRealTime()
        ->Unit(benchmark::kMillisecond);
}
BENCHMARK_CAPTURE(MakeFlipbook, Pal, CSize{768, 576}, 100)->Apply(FlipbookArguments);
BENCHMARK_CAPTURE(MakeFlipbook, Hd, CSize{1920, 1080}, 100)->Apply(FlipbookArguments);
BENCHMARK_CAPTURE(MakeFlipbook, FourK, CSize{3840, 2160}, 24)->Apply(FlipbookArguments);

} // namespace
} // namespace velmor
