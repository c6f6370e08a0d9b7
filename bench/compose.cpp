#include "BenchImages.h"

#include "render/FrameComposer.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

// Composing whole frames: one opaque picture panned by the camera and full-frame cel levels, each rotated and
// scaled. "Cels" are painted characters over a third of the frame with transparent paint around; "Busy" levels are
// opaque noise all over, which no shortcut helps.

namespace velmor {
namespace {

enum class Scene { Cels, Busy };

struct CFrameKind {
    CSize size;
    int levels;
};
constexpr CFrameKind tiny{{32, 24}, 3}; // what a frame, a level and a second thread cost before there is a pixel
constexpr CFrameKind tinyOfMany{{32, 24}, 48};
constexpr CFrameKind pal{{768, 576}, 3};
constexpr CFrameKind palOfMany{{768, 576}, 48};
constexpr CFrameKind hd{{1920, 1080}, 5};
constexpr CFrameKind twoK{{2048, 1556}, 5};
constexpr CFrameKind fourK{{3840, 2160}, 5};

/// The image files of the benchmark, each made when it is first asked for.
class CImageFiles {
public:
    Path Background(CSize size) {
        return File("background", size, [](CCelImg& image, const Path& path, CSize of) {
            static_cast<void>(image.CreatePicture(of.width, of.height, path));
            PaintNoise(image, 1);
        });
    }
    Path Cel(CSize size, int number, Scene scene) {
        const std::string name = (scene == Scene::Cels ? "cel" : "busy") + std::to_string(number);
        return File(name, size, [&](CCelImg& image, const Path& path, CSize of) {
            static_cast<void>(image.CreateCel(of.width, of.height, path));
            if (scene == Scene::Cels)
                PaintCharacter(image, number);
            else
                PaintNoise(image, number);
        });
    }

private:
    template<class Make>
    Path File(const std::string& name, CSize size, const Make& make) {
        Path path = m_folder.Path() / (name + "-" + std::to_string(size.width));
        if (!std::filesystem::exists(path)) {
            CCelImg image;
            make(image, path, size);
            static_cast<void>(image.Save());
        }
        return path;
    }

    CBenchFolder m_folder;
};

CFrameRequest MakeRequest(CImageFiles& files, const CFrameKind& kind, Scene scene, bool antialias) {
    CFrameRequest request;
    request.bufferWidth = PaddedWidthOf(kind.size.width);
    request.backgroundWidth = kind.size.width;
    request.height = kind.size.height;
    request.background = MakeColorRef(10, 20, 30);
    CPlacement at{kind.size.width / 2.0 + 12.25, kind.size.height / 2.0 - 7.5};
    at.antialias = antialias;
    request.layers.push_back({files.Background(kind.size), at});
    for (int level = 0; level < kind.levels; ++level) {
        at.centreX = kind.size.width * (0.5 + 0.03 * level);
        at.centreY = kind.size.height * (0.5 - 0.02 * level);
        at.angle = 0.2 - 0.17 * level;
        at.scaleX = at.scaleY = 0.95 + 0.07 * level;
        request.layers.push_back({files.Cel(kind.size, level, scene), at});
    }
    return request;
}

void Compose(benchmark::State& state, const CFrameKind& kind, Scene scene) {
    static CImageFiles files;
    const bool antialias = state.range(0) != 0;
    const bool cached = state.range(1) != 0;
    const bool parallel = state.range(2) != 0;
    const CFrameRequest request = MakeRequest(files, kind, scene, antialias);
    CImageCache cache(cached ? std::size_t{512} << 20 : 0);
    CFrameBuffer frame;
    static_cast<void>(ComposeFrame(request, cache, frame, parallel)); // fills the cache
    for (auto _ : state) {
        if (const CStatus composed = ComposeFrame(request, cache, frame, parallel); !composed)
            state.SkipWithError(composed.Message().c_str());
        benchmark::DoNotOptimize(frame.pixels.data());
    }
}

// Frames in a row of which the topmost level alone moves: a mouth, or a level that is dragged.
void ComposeHeld(benchmark::State& state, const CFrameKind& kind) {
    static CImageFiles files;
    CFrameRequest request = MakeRequest(files, kind, Scene::Cels, true);
    CImageCache cache(std::size_t{256} << 20);
    CFrameComposer composer(cache);
    CFrameBuffer frame;
    for (auto _ : state) {
        request.layers.back().placement.centreX += 0.01;
        if (const CStatus composed = composer.Compose(request, frame, false); !composed)
            state.SkipWithError(composed.Message().c_str());
        benchmark::DoNotOptimize(frame.pixels.data());
    }
}
BENCHMARK_CAPTURE(ComposeHeld, PalCels, pal)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ComposeHeld, HdCels, hd)->Unit(benchmark::kMillisecond);

void AllWays(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgNames({"antialias", "cached", "parallel"})
        ->ArgsProduct({{0, 1}, {0, 1}, {0, 1}})
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
}

BENCHMARK_CAPTURE(Compose, TinyCels, tiny, Scene::Cels)->Apply(AllWays);
BENCHMARK_CAPTURE(Compose, TinyCelsOfMany, tinyOfMany, Scene::Cels)->Apply(AllWays);
BENCHMARK_CAPTURE(Compose, PalCels, pal, Scene::Cels)->Apply(AllWays);
BENCHMARK_CAPTURE(Compose, PalBusy, pal, Scene::Busy)->Apply(AllWays);
BENCHMARK_CAPTURE(Compose, PalCelsOfMany, palOfMany, Scene::Cels)->Apply(AllWays);
BENCHMARK_CAPTURE(Compose, HdCels, hd, Scene::Cels)->Apply(AllWays);
BENCHMARK_CAPTURE(Compose, HdBusy, hd, Scene::Busy)->Apply(AllWays);
BENCHMARK_CAPTURE(Compose, TwoKCels, twoK, Scene::Cels)->Apply(AllWays);
BENCHMARK_CAPTURE(Compose, FourKCels, fourK, Scene::Cels)->Apply(AllWays);
BENCHMARK_CAPTURE(Compose, FourKBusy, fourK, Scene::Busy)->Apply(AllWays);

} // namespace
} // namespace velmor
