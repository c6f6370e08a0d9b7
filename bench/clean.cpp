// Cleaning up scanned drawings: lines made thicker and thinner on a page of the cel editor, pegs found and pages
// put on them at A4 with 300 pixels an inch.

#include "image/clean/LineWeight.h"
#include "image/clean/PageTurn.h"
#include "image/clean/Pegs.h"
#include "image/paint/Tools.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cmath>
#include <random>

using namespace velmor;

namespace {

constexpr int dpi = 300;

/// Strokes all over a page.
CCelImg Drawing(int width, int height) {
    CCelImg cel;
    static_cast<void>(cel.CreateCel(width, height, "bench.bit"));
    std::mt19937 random(1);
    const auto at = [&random](int size) { return std::uniform_int_distribution(0, size - 1)(random); };
    for (int i = 0; i < 200; ++i) {
        const CPoint from{at(width), at(height * 3 / 4)};
        static_cast<void>(PenStroke(cel, from, {from.x + at(400) - 200, from.y + at(400) - 200}, 4));
    }
    return cel;
}

/// A4 on its side, holes at the top, with dust.
CCelImg Scan(bool isPunched) {
    CCelImg cel = Drawing(3508, 2480);
    std::mt19937 random(2);
    for (int i = 0; i < 3000; ++i)
        cel.SetLine(static_cast<int>(random() % 3508), static_cast<int>(random() % 2480), true);
    for (int y = 2100; y < 2480; ++y)
        for (int x = 0; x < 3508; ++x) {
            const double along = (x - 1750) + (y - 2330) * 0.02, across = (y - 2330) - (x - 1750) * 0.02;
            const bool isRound = std::hypot(along, across) < dpi / 8.0;
            const bool isSlot = std::abs(std::abs(along) - 4 * dpi) < dpi / 4.0 && std::abs(across) < dpi / 16.0;
            cel.SetLine(x, y, isPunched && (isRound || isSlot));
        }
    return cel;
}

void Thicken(benchmark::State& state) {
    const CCelImg drawing = Drawing(2048, 1536);
    for (auto _ : state) {
        CCelImg cel = drawing;
        benchmark::DoNotOptimize(static_cast<bool>(ThickenLines(cel, static_cast<int>(state.range()))));
    }
}
BENCHMARK(Thicken)->Arg(1)->Arg(8)->Unit(benchmark::kMillisecond);

void Thin(benchmark::State& state) {
    const CCelImg drawing = Drawing(2048, 1536);
    for (auto _ : state) {
        CCelImg cel = drawing;
        benchmark::DoNotOptimize(static_cast<bool>(ThinLines(cel, static_cast<int>(state.range()))));
    }
}
BENCHMARK(Thin)->Arg(1)->Arg(8)->Unit(benchmark::kMillisecond);

void FindPegsOfA4(benchmark::State& state) {
    const CCelImg scan = Scan(state.range() != 0);
    CPegs pegs;
    for (auto _ : state)
        benchmark::DoNotOptimize(static_cast<bool>(FindPegs(scan, {}, pegs)));
    state.SetLabel(state.range() != 0 ? "found" : "none there");
}
BENCHMARK(FindPegsOfA4)->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond);

void RegisterA4(benchmark::State& state) {
    const CCelImg scan = Scan(true);
    CPegs pegs;
    static_cast<void>(FindPegs(scan, {}, pegs));
    const CPegs straight = StraightPegs(pegs, {3508, 2480});
    for (auto _ : state) {
        CCelImg page = scan;
        benchmark::DoNotOptimize(static_cast<bool>(PutOnPegs(page, pegs, straight, {3508, 2480})));
    }
}
BENCHMARK(RegisterA4)->Unit(benchmark::kMillisecond);

void FindTurnOfA4(benchmark::State& state) {
    const CCelImg scan = Scan(false);
    for (auto _ : state)
        benchmark::DoNotOptimize(FindPageTurn(scan, 128));
}
BENCHMARK(FindTurnOfA4)->Unit(benchmark::kMillisecond);

} // namespace
