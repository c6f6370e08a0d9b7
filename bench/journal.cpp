// Writing into a journal, and opening a long one.

#include "platform/journal/Journal.h"
#include "BenchImages.h"

#include <benchmark/benchmark.h>
#include <filesystem>
#include <random>
#include <string>

using namespace velmor;

namespace {

Path JournalIn(const CBenchFolder& folder) {
    return folder.Path() / "journal";
}

// Tiles of a drawing: flat paint, and a line three pixels thick across each.
JournalBytes Tiles(int count, std::int64_t seed) {
    constexpr std::int64_t side = 64, planes = 4;
    constexpr std::int64_t tileBytes = side * side * planes + 1024; // and what says which pixels are line
    JournalBytes bytes(static_cast<std::size_t>(count * tileBytes), 255);
    for (std::int64_t tile = 0; tile < count; ++tile)
        for (std::int64_t y = 0; y < side; ++y) {
            const std::int64_t middle = (y * (tile + seed % 7 + 2) / 5 + 11 * tile + seed) % (side - 3);
            for (std::int64_t byte = 0; byte < side * planes; ++byte) {
                const std::int64_t x = byte / planes;
                bytes[static_cast<std::size_t>(tile * tileBytes + y * side * planes + byte)] =
                    x < middle       ? static_cast<std::uint8_t>(90 + 40 * (byte % planes))
                    : x < middle + 3 ? 0
                                     : 255;
            }
        }
    return bytes;
}

bool Opened(const CBenchFolder& folder, std::unique_ptr<CJournal>& journal, CJournalContents& contents) {
    return static_cast<bool>(CJournal::Open(JournalIn(folder), journal, contents));
}

// Every pixel a little different, as in what was scanned or blurred.
void AddGrain(JournalBytes& bytes) {
    std::mt19937 random(3);
    for (std::uint8_t& byte : bytes)
        byte = static_cast<std::uint8_t>(byte ^ random() % 16);
}

void CommitOfAStroke(benchmark::State& state, bool grain) {
    const CBenchFolder folder;
    std::unique_ptr<CJournal> journal;
    CJournalContents contents;
    if (!Opened(folder, journal, contents)) {
        state.SkipWithError("not opened");
        return;
    }
    JournalBytes body = Tiles(static_cast<int>(state.range(0)), 5);
    if (grain)
        AddGrain(body);
    const JournalBytes heading(100, 7);
    std::int64_t id = 0;
    for (auto _ : state) {
        ++id;
        journal->Write({{{id, heading, body}}, {id - 100}, {{id, id, true}}, 0, {}});
        journal->WaitUntilWritten();
    }
    state.counters["storedBytes"] = static_cast<double>(journal->StoredBytes(id));
}

void OpeningOf(benchmark::State& state) {
    const CBenchFolder folder;
    std::unique_ptr<CJournal> journal;
    CJournalContents contents;
    if (!Opened(folder, journal, contents)) {
        state.SkipWithError("not opened");
        return;
    }
    for (std::int64_t id = 1; id <= state.range(0); ++id)
        journal->Write({{{id, JournalBytes(100, 7), Tiles(4, id)}}, {}, {{id, id, true}}, 0, {}});
    for (auto _ : state) {
        state.PauseTiming();
        journal.reset();
        state.ResumeTiming();
        if (!Opened(folder, journal, contents))
            state.SkipWithError("not opened");
    }
    journal.reset();
    state.counters["fileBytes"] = static_cast<double>(std::filesystem::file_size(JournalIn(folder)));
}

} // namespace

// The writing is done by a thread of its own, whose time counts.
BENCHMARK_CAPTURE(CommitOfAStroke, Flat, false)->Arg(30)->MeasureProcessCPUTime()->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(CommitOfAStroke, Grain, true)->Arg(30)->MeasureProcessCPUTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(OpeningOf)->Arg(10000)->Unit(benchmark::kMillisecond);
