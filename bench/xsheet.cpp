// Loading and saving of the largest xsheet that editing allows, what a kept state of it costs, and its edits.

#include "xsheet/XSheetFile.h"
#include "xsheet/exposing/SheetEdit.h"

#include <benchmark/benchmark.h>
#include <filesystem>
#include <malloc.h>
#include <string>
#include <unistd.h>
#include <vector>

using namespace velmor;

namespace {

// Drawings on twos on every level but the last, which is empty as spare levels are.
CScene LargestSheet() {
    CScene data;
    data.xsheet = CXSheet(CXSheet::mostLevels, CXSheet::mostFrames);
    for (int level = 0; level + 1 < CXSheet::mostLevels; ++level) {
        data.xsheet.SetLevelName(level, "Level " + std::to_string(level));
        for (int frame = 0; frame < CXSheet::mostFrames; ++frame)
            data.xsheet.MutableCell(level, frame) =
                CXSheetCell::FromFile("walk" + std::to_string(level), std::to_string(frame / 2 + 1),
                                      {frame * 0.5, level * 10.0, 1, 1, 0.01 * frame}, 0, 1, 1, {768, 576});
    }
    return data;
}

Path SheetFile() {
    return std::filesystem::temp_directory_path() / ("velmor-bench-" + std::to_string(::getpid()) + ".xsheet");
}

void LoadSheet(benchmark::State& state) {
    const Path file = SheetFile();
    if (!SaveXSheet(file, LargestSheet()))
        state.SkipWithError("not saved");
    for (auto _ : state) {
        CScene data;
        if (!LoadXSheet(file, data))
            state.SkipWithError("not loaded");
        benchmark::DoNotOptimize(data);
    }
    std::filesystem::remove(file);
}

void SaveSheet(benchmark::State& state) {
    const Path file = SheetFile();
    const CScene data = LargestSheet();
    for (auto _ : state)
        if (!SaveXSheet(file, data))
            state.SkipWithError("not saved");
    std::filesystem::remove(file);
}

// What a step of a history costs: the state before it is kept, then one cell changes.
void KeepStateAndEditCell(benchmark::State& state) {
    CScene data = LargestSheet();
    std::vector<CXSheet> kept;
    kept.reserve(1000);
    const std::size_t before = ::mallinfo2().uordblks;
    std::size_t bytes = 0;
    int frame = 0;
    for (auto _ : state) {
        if (kept.size() == kept.capacity()) {
            bytes = (::mallinfo2().uordblks - before) / kept.size();
            state.PauseTiming();
            kept.clear();
            state.ResumeTiming();
        }
        kept.push_back(data.xsheet);
        frame = (frame + 7) % CXSheet::mostFrames;
        if (!data.xsheet.MutableCell(frame % (CXSheet::mostLevels - 1), frame).Move(1, 1))
            state.SkipWithError("not moved");
    }
    state.counters["bytes_a_state"] = static_cast<double>(bytes);
}

void ExpandAndCondense(benchmark::State& state) {
    CScene data = LargestSheet();
    const CXSheetSelection all{0, CXSheet::mostLevels - 1, 0, CXSheet::mostFrames - 1};
    for (auto _ : state) {
        data.xsheet.Expand(all);
        data.xsheet.Condense(all);
    }
}

// What is shown while a handle is dragged over all cells, and then done.
template<SheetEditKind kind>
void EditTiming(benchmark::State& state) {
    const CScene data = LargestSheet();
    const CXSheetSelection all{0, CXSheet::mostLevels - 1, 0, CXSheet::mostFrames - 1};
    for (auto _ : state) {
        CScene outcome = data;
        Apply({kind, all, 3, Following::Push, 1}, outcome);
        benchmark::DoNotOptimize(outcome);
    }
}

BENCHMARK(EditTiming<SheetEditKind::OnFrames>)->Unit(benchmark::kMillisecond);
BENCHMARK(EditTiming<SheetEditKind::Random>)->Unit(benchmark::kMillisecond);
BENCHMARK(EditTiming<SheetEditKind::Roll>)->Unit(benchmark::kMillisecond);
BENCHMARK(EditTiming<SheetEditKind::Shift>)->Unit(benchmark::kMillisecond);
BENCHMARK(EditTiming<SheetEditKind::InsertTime>)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadSheet)->Unit(benchmark::kMillisecond);
BENCHMARK(SaveSheet)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(KeepStateAndEditCell)->Unit(benchmark::kMicrosecond);
BENCHMARK(ExpandAndCondense)->Unit(benchmark::kMillisecond);

} // namespace
