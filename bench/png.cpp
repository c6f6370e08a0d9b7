#include "BenchImages.h"

#include "render/FrameComposer.h"
#include "render/FrameFiles.h"

#include <benchmark/benchmark.h>

// Composed frames written as PNG files: flat figures before a landscape of soft gradients, and the same with the
// grain of painted paper.

namespace velmor {
namespace {

constexpr int characters = 3;

CFrameLayer Layer(CCelImg& image, CPlacement placement) {
    static_cast<void>(image.Save());
    return {image.FilePath(), placement};
}

CFrameBuffer Compose(CSize size) {
    const CBenchFolder folder;
    CFrameRequest request;
    request.bufferWidth = request.backgroundWidth = size.width;
    request.height = size.height;
    CPlacement place{size.width / 2.0, size.height / 2.0};
    place.antialias = true;
    CCelImg back;
    static_cast<void>(back.CreatePicture(size.width, size.height, folder.Path() / "back"));
    PaintLandscape(back);
    request.layers.push_back(Layer(back, place));
    for (int number = 0; number < characters; ++number) {
        CCelImg cel;
        static_cast<void>(cel.CreateCel(size.width, size.height, folder.Path() / std::to_string(number)));
        PaintCharacter(cel, number + 1);
        place.angle = 0.3 - 0.1 * number;
        place.centreX += 20;
        request.layers.push_back(Layer(cel, place));
    }
    CImageCache cache(CImageCache::usualBytes);
    CFrameBuffer frame;
    static_cast<void>(ComposeFrame(request, cache, frame, true));
    return frame;
}

void AddGrain(CFrameBuffer& frame) {
    std::uint32_t state = 1;
    for (std::uint8_t& value : frame.pixels) {
        state = state * 1664525U + 1013904223U;
        value = static_cast<std::uint8_t>(std::min(255U, value + (state >> 30)));
    }
}

void WriteFrame(benchmark::State& state, CSize size, bool grain) {
    CFrameBuffer frame = Compose(size);
    if (grain)
        AddGrain(frame);
    const CBenchFolder folder;
    const Path file = folder.Path() / "frame.png";
    const auto compression = static_cast<PngCompression>(state.range(0));
    for (auto _ : state)
        if (!WriteFrameFile(file, FrameFormat::Png, frame, {}, compression))
            state.SkipWithError("the frame was not written");
    state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(file));
}

void Compressions(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgName("compression")->DenseRange(0, 2)->Unit(benchmark::kMillisecond);
}
BENCHMARK_CAPTURE(WriteFrame, PalFlat, CSize{768, 576}, false)->Apply(Compressions);
BENCHMARK_CAPTURE(WriteFrame, HdFlat, CSize{1920, 1080}, false)->Apply(Compressions);
BENCHMARK_CAPTURE(WriteFrame, PalGrained, CSize{768, 576}, true)->Apply(Compressions);
BENCHMARK_CAPTURE(WriteFrame, HdGrained, CSize{1920, 1080}, true)->Apply(Compressions);

} // namespace
} // namespace velmor
