// Loading and saving of the largest xsheet that editing allows, the copy that undo keeps of it, and its edits.

#include "xsheet/XSheetFile.h"

#include <benchmark/benchmark.h>
#include <filesystem>
#include <string>
#include <unistd.h>

using namespace velmor;

namespace {

// Drawings on twos on every level but the last, which is empty as spare levels are.
CXSheetData LargestSheet() {
    CXSheetData data;
    data.xsheet = CXSheet(CXSheet::mostLevels, CXSheet::mostFrames);
    for (int level = 0; level + 1 < CXSheet::mostLevels; ++level) {
        data.xsheet.SetLevelName(level, "Level " + std::to_string(level));
        for (int frame = 0; frame < CXSheet::mostFrames; ++frame)
            data.xsheet.Cel(level, frame) =
                CXSheetCel::FromFile("walk" + std::to_string(level), std::to_string(frame / 2 + 1),
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
        CXSheetData data;
        if (!LoadXSheet(file, data))
            state.SkipWithError("not loaded");
        benchmark::DoNotOptimize(data);
    }
    std::filesystem::remove(file);
}

void SaveSheet(benchmark::State& state) {
    const Path file = SheetFile();
    const CXSheetData data = LargestSheet();
    for (auto _ : state)
        if (!SaveXSheet(file, data))
            state.SkipWithError("not saved");
    std::filesystem::remove(file);
}

void CopyForUndo(benchmark::State& state) {
    const CXSheetData data = LargestSheet();
    for (auto _ : state) {
        CXSheet copy = data.xsheet;
        benchmark::DoNotOptimize(copy);
    }
}

void ExpandAndCondense(benchmark::State& state) {
    CXSheetData data = LargestSheet();
    const CXSheetSelection all{0, CXSheet::mostLevels - 1, 0, CXSheet::mostFrames - 1};
    for (auto _ : state) {
        data.xsheet.Expand(all);
        data.xsheet.Condense(all);
    }
}

BENCHMARK(LoadSheet)->Unit(benchmark::kMillisecond);
BENCHMARK(SaveSheet)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(CopyForUndo)->Unit(benchmark::kMillisecond);
BENCHMARK(ExpandAndCondense)->Unit(benchmark::kMillisecond);

} // namespace
