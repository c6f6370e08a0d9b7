// The sound of a sheet of ten minutes: the track, the mix in full quality, and what is drawn of it.

#include "sound/SoundFile.h"
#include "sound/SoundMix.h"
#include "sound/SoundPeaks.h"
#include "sound/SoundTrack.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <vector>

using namespace velmor;

namespace {

constexpr int seconds = 600;
constexpr int frameRate = 3; // of the longest sheets
constexpr int frames = seconds * frameRate;

std::vector<std::uint8_t> TenMinutes() {
    std::vector<std::uint8_t> samples(std::size_t{seconds} * samplesPerSecond);
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = static_cast<std::uint8_t>(128 + 100 * std::sin(static_cast<double>(i) * 0.05));
    return samples;
}

void PrepareTrackOfTenMinutes(benchmark::State& state) {
    const std::vector<std::uint8_t> sound = TenMinutes();
    const auto load = [&](const std::string&, std::vector<std::uint8_t>& samples) {
        samples = sound;
        return CStatus();
    };
    for (auto _ : state) {
        std::optional<std::vector<std::uint8_t>> track;
        benchmark::DoNotOptimize(PrepareTrack({{0, "a"}}, frames, frameRate, load, track));
    }
}
BENCHMARK(PrepareTrackOfTenMinutes)->Unit(benchmark::kMillisecond);

// Of one sound that lasts as long as the sheet, and one that is over it now and then.
void MixTenMinutes(benchmark::State& state) {
    const std::vector<std::uint8_t> sound = TenMinutes();
    const auto load = [&](const std::string& name, std::size_t most, std::vector<float>& stereo) {
        stereo = StereoOf(std::span(sound).first(name == "a" ? sound.size() : samplesPerSecond), most);
        return CStatus();
    };
    std::vector<CSoundPlacement> placements{{0, "a"}};
    for (int frame = 1; frame < frames; frame += 60)
        placements.push_back({frame, "b"});
    for (auto _ : state) {
        CMixedSound mixed;
        benchmark::DoNotOptimize(MixSounds(placements, frames, frameRate, load, mixed));
    }
}
BENCHMARK(MixTenMinutes)->Unit(benchmark::kMillisecond);

void WaveOfTenMinutes(benchmark::State& state) {
    const std::vector<std::uint8_t> sound = TenMinutes();
    for (auto _ : state)
        benchmark::DoNotOptimize(CSoundPeaks(sound).Length());
}
BENCHMARK(WaveOfTenMinutes)->Unit(benchmark::kMillisecond);

// What a window of forty frames at 24 a second asks for each time it is looked at.
void LinesOfAWindow(benchmark::State& state) {
    const std::vector<std::uint8_t> sound = TenMinutes();
    const CSoundPeaks peaks{sound};
    for (auto _ : state)
        for (std::uint64_t line = 0; line < 40 * 20; ++line)
            benchmark::DoNotOptimize(peaks.Between(line * 918 / 20, (line + 1) * 918 / 20));
}
BENCHMARK(LinesOfAWindow)->Unit(benchmark::kMicrosecond);

} // namespace
