// Painting tools, fills, filters and transforms on a page of the cel editor and on a frame.

#include "image/paint/Fill.h"
#include "image/paint/Filters.h"
#include "image/paint/GapFill.h"
#include "image/paint/Tools.h"
#include "image/transform/Transforms.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <random>

using namespace velmor;

namespace {

constexpr CColor red{0, 0, 255, 255};
constexpr CColor blue{255, 0, 0, 255};
constexpr int pageWidth = 2048;
constexpr int pageHeight = 1536;

CCelImg EmptyPage(int width, int height) {
    CCelImg cel;
    static_cast<void>(cel.CreateCel(width, height, "bench.bit"));
    return cel;
}

/// A grid of bent walls that encloses a few hundred areas.
CCelImg BusyPage(int width, int height) {
    CCelImg cel = EmptyPage(width, height);
    std::mt19937 random(1);
    const auto offset = [&random] { return std::uniform_int_distribution(-12, 12)(random); };
    constexpr int cell = 96;
    for (int y = 0; y < height; y += cell)
        for (int x = 0; x < width; x += cell) {
            static_cast<void>(PenStroke(cel, {x, y}, {x + cell / 2, y + offset()}, 1));
            static_cast<void>(PenStroke(cel, {x + cell / 2, y}, {x + cell, y}, 1));
            static_cast<void>(PenStroke(cel, {x + cell / 2, y - 14}, {x + cell / 2, y + 14}, 1));
            static_cast<void>(PenStroke(cel, {x, y}, {x + offset(), y + cell / 2}, 2));
            static_cast<void>(PenStroke(cel, {x - 14, y + cell / 2}, {x + 14, y + cell / 2}, 1));
            static_cast<void>(PenStroke(cel, {x, y + cell / 2}, {x, y + cell}, 2));
        }
    return cel;
}

CCelImg Photograph(int width, int height) {
    CCelImg picture;
    static_cast<void>(picture.CreatePicture(width, height, "bench.rgba"));
    std::mt19937 random(2);
    for (const Channel channel : {Channel::Red, Channel::Green, Channel::Blue, Channel::Alpha})
        for (std::uint8_t& byte : picture.PlaneOf(channel))
            byte = static_cast<std::uint8_t>(random());
    return picture;
}

void FillEmptyPage(benchmark::State& state) {
    CCelImg cel = EmptyPage(pageWidth, pageHeight);
    for (auto _ : state)
        benchmark::DoNotOptimize(Fill(cel, 700, 700, red).changed);
}

/// What the memory alone takes: the four planes of the same page set to one value each.
void SetPlanesOfPage(benchmark::State& state) {
    CCelImg cel = EmptyPage(pageWidth, pageHeight);
    for (auto _ : state)
        for (const Channel channel : {Channel::Red, Channel::Green, Channel::Blue, Channel::Alpha}) {
            std::ranges::fill(cel.PlaneOf(channel), std::uint8_t{7});
            benchmark::ClobberMemory();
        }
}

void FillOneCell(benchmark::State& state) {
    CCelImg cel = BusyPage(pageWidth, pageHeight);
    for (auto _ : state)
        benchmark::DoNotOptimize(Fill(cel, 720, 720, red).changed);
}

void FillGradientEmptyPage(benchmark::State& state) {
    CCelImg cel = EmptyPage(pageWidth, pageHeight);
    for (auto _ : state)
        benchmark::DoNotOptimize(FillGradient(cel, 10, 10, red, 2000, 1500, blue).changed);
}

void FillBoxEmptyPage(benchmark::State& state) {
    CCelImg cel = EmptyPage(pageWidth, pageHeight);
    for (auto _ : state)
        benchmark::DoNotOptimize(FillBox(cel, 100, 1900, 100, 1400, red).changed);
}

void FillBoxBusyPage(benchmark::State& state) {
    CCelImg cel = BusyPage(pageWidth, pageHeight);
    for (auto _ : state)
        benchmark::DoNotOptimize(FillBox(cel, 0, pageWidth - 1, 0, pageHeight - 1, red).changed);
}

/// Dust: every area is a few pixels large, so that the cost of a run counts.
void FillDust(benchmark::State& state) {
    CCelImg cel = EmptyPage(pageWidth, pageHeight);
    std::mt19937 random(3);
    for (int y = 0; y < pageHeight; ++y)
        for (int x = 0; x < pageWidth; ++x)
            cel.SetLine(x, y, random() % 100 < 20);
    for (auto _ : state)
        benchmark::DoNotOptimize(FillBox(cel, 0, pageWidth - 1, 0, pageHeight - 1, red).changed);
}

/// The page's lines end where they please: with gaps closed it falls apart into rooms, without it is one area.
CCelImg OpenPage(int width, int height) {
    CCelImg cel = BusyPage(width, height);
    std::mt19937 random(4);
    for (int y = 0; y < height; y += 96)
        for (int x = 0; x < width; x += 96)
            for (const CPoint corner : {CPoint{x + 20, y - 16}, CPoint{x - 16, y + 70}})
                for (int v = std::max(corner.y, 0); v < std::min(corner.y + 34, height); ++v)
                    for (int u = std::max(corner.x, 0); u < std::min(corner.x + (v - corner.y < 6 ? 34 : 6), width);
                         ++u)
                        if (random() % 8 != 0)
                            cel.SetLine(u, v, false);
    return cel;
}

void GapFillOneCell(benchmark::State& state) {
    CCelImg cel = BusyPage(pageWidth, pageHeight);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            PaintArea(cel, FindFillArea(cel, {720, 720}, {static_cast<int>(state.range(0)), true}), red).changed);
}

void GapFillOpenPage(benchmark::State& state) {
    CCelImg cel = OpenPage(pageWidth, pageHeight);
    const bool refuseLeaks = state.range(1) != 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(
            PaintArea(cel, FindFillArea(cel, {720, 720}, {static_cast<int>(state.range(0)), refuseLeaks}), red)
                .changed);
}

/// The background of a drawing, which is asked whether it is a leak.
void GapFillBackground(benchmark::State& state) {
    CCelImg cel = OpenPage(pageWidth, pageHeight);
    static_cast<void>(EraserStroke(cel, {0, 20}, {pageWidth, 20}, 5, red));
    for (auto _ : state)
        benchmark::DoNotOptimize(
            PaintArea(cel, FindFillArea(cel, {300, 20}, {static_cast<int>(state.range(0)), true}), red).changed);
}

void FindGapsOfPage(benchmark::State& state) {
    const CMaskPlane lines(OpenPage(pageWidth, pageHeight));
    for (auto _ : state)
        benchmark::DoNotOptimize(FindGaps(lines, static_cast<int>(state.range(0))).size());
}

void PenSegment(benchmark::State& state) {
    CCelImg cel = EmptyPage(pageWidth, pageHeight);
    for (auto _ : state)
        benchmark::DoNotOptimize(PenStroke(cel, {1000, 700}, {1012, 707}, 3).changed);
}

void SoftEraserSegment(benchmark::State& state) {
    CCelImg picture = Photograph(pageWidth, pageHeight);
    for (auto _ : state)
        benchmark::DoNotOptimize(EraserStroke(picture, {1000, 700}, {1012, 707}, 5, red).changed);
}

/// Measures an operation that changes what it works on, each time on a fresh copy.
template<class Operation>
void OnCopies(benchmark::State& state, const CCelImg& image, Operation operation) {
    for (auto _ : state) {
        state.PauseTiming();
        CCelImg copy = image;
        state.ResumeTiming();
        operation(copy);
    }
}

void SmoothFrame(benchmark::State& state) {
    OnCopies(state, BusyPage(768, 576), [](CCelImg& cel) { benchmark::DoNotOptimize(Smooth(cel).changed); });
}

void BlurCel(benchmark::State& state) {
    const int radius = static_cast<int>(state.range(0));
    OnCopies(state, BusyPage(768, 576),
             [radius](CCelImg& cel) { benchmark::DoNotOptimize(Blur(cel, radius, radius).changed); });
}

void BlurPicture(benchmark::State& state) {
    const int radius = static_cast<int>(state.range(0));
    OnCopies(state, Photograph(768, 576),
             [radius](CCelImg& picture) { benchmark::DoNotOptimize(Blur(picture, radius, radius).changed); });
}

void RotatePicture(benchmark::State& state) {
    const auto degrees = static_cast<double>(state.range(0));
    OnCopies(state, Photograph(768, 576), [degrees](CCelImg& picture) {
        benchmark::DoNotOptimize(static_cast<bool>(Rotate(picture, degrees)));
    });
}

void FlipPage(benchmark::State& state) {
    CCelImg cel = BusyPage(pageWidth, pageHeight);
    for (auto _ : state)
        benchmark::DoNotOptimize(static_cast<bool>(FlipX(cel)));
}

void KeyPicture(benchmark::State& state) {
    CCelImg picture = Photograph(768, 576);
    for (auto _ : state)
        benchmark::DoNotOptimize(static_cast<bool>(ColorKey(picture, {red, 100})));
}

} // namespace

BENCHMARK(FillEmptyPage)->Unit(benchmark::kMicrosecond);
BENCHMARK(SetPlanesOfPage)->Unit(benchmark::kMicrosecond);
BENCHMARK(FillOneCell)->Unit(benchmark::kMicrosecond);
BENCHMARK(FillGradientEmptyPage)->Unit(benchmark::kMicrosecond);
BENCHMARK(FillBoxEmptyPage)->Unit(benchmark::kMicrosecond);
BENCHMARK(FillBoxBusyPage)->Unit(benchmark::kMicrosecond);
BENCHMARK(FillDust)->Unit(benchmark::kMicrosecond);
BENCHMARK(GapFillOneCell)->Arg(8)->Arg(32)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(GapFillOpenPage)
    ->ArgNames({"gap", "refuse"})
    ->Args({0, 0})
    ->Args({8, 0})
    ->Args({8, 1})
    ->Args({32, 0})
    ->Args({32, 1})
    ->Unit(benchmark::kMicrosecond)
    ->UseRealTime();
BENCHMARK(GapFillBackground)->Arg(8)->Arg(32)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(FindGapsOfPage)->Arg(8)->Arg(32)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(PenSegment)->Unit(benchmark::kMicrosecond);
BENCHMARK(SoftEraserSegment)->Unit(benchmark::kMicrosecond);
BENCHMARK(SmoothFrame)->Unit(benchmark::kMicrosecond);
BENCHMARK(BlurCel)->Arg(2)->Arg(50)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(BlurPicture)->Arg(2)->Arg(50)->Arg(200)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(RotatePicture)->Arg(90)->Arg(30)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(FlipPage)->Unit(benchmark::kMicrosecond);
BENCHMARK(KeyPicture)->Unit(benchmark::kMicrosecond);
