// Lifting a whole page of the cel editor, dragging it and putting it down.

#include "image/select/CopyPixels.h"
#include "image/select/PieceTransform.h"
#include "image/select/SelectShapes.h"

#include <benchmark/benchmark.h>
#include <random>

using namespace velmor;

namespace {

constexpr CSize page{2048, 1536};
constexpr CRect whole{0, 0, page.width, page.height};

/// Lines on a tenth of the page, painted all over.
CCelImg BusyPage() {
    CCelImg cel;
    static_cast<void>(cel.CreateCel(page.width, page.height, "bench.bit"));
    std::mt19937 random(1);
    for (int y = 0; y < page.height; ++y)
        for (int x = 0; x < page.width; ++x) {
            cel.SetLine(x, y, random() % 10 == 0);
            cel.SetColorAt(x, y, {static_cast<std::uint8_t>(x / 64), static_cast<std::uint8_t>(y / 64), 90, 255});
        }
    return cel;
}

CPiece WholePage(const CCelImg& cel, SelectWhat what) {
    return LiftedFrom(cel, SelectRectangle(page, whole), what);
}

void LiftPage(benchmark::State& state) {
    const CCelImg cel = BusyPage();
    for (auto _ : state) {
        CCelImg ground = cel;
        benchmark::DoNotOptimize(TakeOut(ground, WholePage(cel, static_cast<SelectWhat>(state.range(0)))));
    }
}
BENCHMARK(LiftPage)->Arg(static_cast<int>(SelectWhat::Line))->Arg(static_cast<int>(SelectWhat::Both));

/// One event of a drag: what was covered comes back, and the piece lies a pixel further.
void DragPage(benchmark::State& state) {
    CCelImg cel = BusyPage();
    const CPiece piece = WholePage(cel, static_cast<SelectWhat>(state.range(0)));
    CCelImg ground = cel;
    static_cast<void>(TakeOut(ground, piece));
    int move = 0;
    for (auto _ : state) {
        CopyPixels(ground, whole, cel);
        benchmark::DoNotOptimize(Drop(cel, piece, {++move % 200, move % 150}));
    }
}
BENCHMARK(DragPage)->Arg(static_cast<int>(SelectWhat::Line))->Arg(static_cast<int>(SelectWhat::Both));

/// One event of turning it.
void TurnPage(benchmark::State& state) {
    const CPiece piece = WholePage(BusyPage(), SelectWhat::Both);
    double degrees = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(Placed(piece, {{}, degrees += 0.7}));
}
BENCHMARK(TurnPage);

void SelectAreaOfPage(benchmark::State& state) {
    const CCelImg cel = BusyPage();
    for (auto _ : state)
        benchmark::DoNotOptimize(SelectColor(cel, {5, 5}, 40, true).Count());
}
BENCHMARK(SelectAreaOfPage);

} // namespace
