// Loading and saving of cels and pictures, and the bitmap that the cel editor shows.

#include "platform/files/Files.h"
#include "image/CelImg.h"
#include "image/DisplayBitmap.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <filesystem>
#include <string>
#include <unistd.h>

using namespace velmor;

namespace {

constexpr int circleCount = 24;

Path TemporaryFile(const std::string& name) {
    return std::filesystem::temp_directory_path() / ("velmor-bench-" + std::to_string(::getpid()) + name);
}

// A drawing as animators make it: outlines three pixels thick, flat paint inside some of them, paper elsewhere.
void Draw(CCelImg& image) {
    const int unit = image.Height() / 8;
    for (int i = 0; i < circleCount; ++i) {
        const int centerX = (i * 7 + 3) % 19 * image.Width() / 19, centerY = (i * 5 + 2) % 11 * image.Height() / 11;
        const int radius = unit / 2 + i % 5 * unit / 4;
        const bool painted = i % 3 != 0;
        for (int y = 0; y < image.Height(); ++y)
            for (int x = 0; x < image.Width(); ++x) {
                const double distance = std::hypot(x - centerX, y - centerY) - radius;
                if (std::abs(distance) < 1.5) {
                    if (image.GetLoadState() == LoadState::Cel)
                        image.SetLine(x, y, true);
                    image.SetColorAt(x, y, {0, 0, 0, 255});
                } else if (painted && distance < 0) {
                    const int tone = 40 + i * 8;
                    const auto byte = [](int value) { return static_cast<std::uint8_t>(value); };
                    image.SetColorAt(x, y, {byte(tone), byte(255 - tone), byte(tone / 2), byte(i % 4 ? 255 : 0)});
                }
            }
    }
}

CCelImg Drawing(benchmark::State& state, LoadState kind) {
    const auto width = static_cast<int>(state.range(0)), height = static_cast<int>(state.range(1));
    CCelImg image;
    const Path file = TemporaryFile(kind == LoadState::Cel ? ".bit" : ".rgba");
    if (!(kind == LoadState::Cel ? image.CreateCel(width, height, file) : image.CreatePicture(width, height, file)))
        state.SkipWithError("no image");
    Draw(image);
    return image;
}

void Load(benchmark::State& state, LoadState kind) {
    CCelImg image = Drawing(state, kind);
    const Path file = image.FilePath();
    if (!image.Save())
        state.SkipWithError("not saved");
    for (auto _ : state) {
        CCelImg loaded;
        if (!loaded.Load(file))
            state.SkipWithError("not loaded");
        benchmark::DoNotOptimize(loaded);
    }
    state.counters["fileBytes"] = static_cast<double>(std::filesystem::file_size(file));
    static_cast<void>(RemoveFile(file));
}

void Save(benchmark::State& state, LoadState kind) {
    CCelImg image = Drawing(state, kind);
    for (auto _ : state)
        if (!image.Save())
            state.SkipWithError("not saved");
    static_cast<void>(RemoveFile(image.FilePath()));
}

void Display(benchmark::State& state, LoadState kind) {
    const CCelImg image = Drawing(state, kind);
    CDisplayBitmap bitmap;
    for (auto _ : state) {
        if (!CreateBitmap(image, {}, bitmap))
            state.SkipWithError("no bitmap");
        benchmark::DoNotOptimize(bitmap.bytes.data());
    }
}

void UpdateUnderABrush(benchmark::State& state) {
    const CCelImg image = Drawing(state, LoadState::Cel);
    CDisplayBitmap bitmap;
    if (!CreateBitmap(image, {}, bitmap))
        state.SkipWithError("no bitmap");
    for (auto _ : state) {
        UpdateBitmap(image, {}, {100, 100, 142, 142}, bitmap);
        benchmark::DoNotOptimize(bitmap.bytes.data());
    }
}

void Sizes(benchmark::internal::Benchmark* bench) {
    bench->Args({768, 576})->Args({2048, 1536})->Unit(benchmark::kMillisecond);
}

} // namespace

BENCHMARK_CAPTURE(Load, Cel, LoadState::Cel)->Apply(Sizes);
BENCHMARK_CAPTURE(Save, Cel, LoadState::Cel)->Apply(Sizes);
BENCHMARK_CAPTURE(Load, Picture, LoadState::Picture)->Apply(Sizes);
BENCHMARK_CAPTURE(Save, Picture, LoadState::Picture)->Apply(Sizes);
BENCHMARK_CAPTURE(Display, Picture, LoadState::Picture)->Apply(Sizes);
BENCHMARK(UpdateUnderABrush)->Apply(Sizes);
