#include "render/avi/MsVideo1.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

using namespace velmor;

namespace {

using Frame = std::vector<std::uint8_t>;

void SetPixel(Frame& frame, int width, int x, int y, double coverage, const std::uint8_t (&color)[3]) {
    for (std::size_t channel = 0; channel < 3; ++channel) {
        std::uint8_t& value =
            frame[(static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)) *
                      3 +
                  channel];
        value = static_cast<std::uint8_t>(value + (color[channel] - value) * coverage);
    }
}

// A painted background of soft gradients with some grain in its lower third, before it flat figures with smooth
// black outlines.
Frame MakeCelFrame(int width, int height) {
    Frame frame(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3);
    std::mt19937 random(7);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const double up = static_cast<double>(y) / height;
            const double grain = up < 0.33 ? static_cast<double>(random() % 8) : 0;
            const std::uint8_t color[3] = {static_cast<std::uint8_t>(120 + 110 * up),
                                           static_cast<std::uint8_t>(140 + 60 * up + grain),
                                           static_cast<std::uint8_t>(90 + 50.0 * x / width + grain)};
            SetPixel(frame, width, x, y, 1, color);
        }
    constexpr std::uint8_t paints[4][3] = {{60, 90, 220}, {200, 220, 250}, {40, 160, 60}, {200, 80, 40}};
    constexpr std::uint8_t black[3] = {0, 0, 0};
    for (int figure = 0; figure < 8; ++figure) {
        const double centerX = width * (0.1 + 0.11 * figure);
        const double centerY = height * (0.3 + 0.05 * (figure % 5));
        const double radius = height * (0.08 + 0.03 * (figure % 4));
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) {
                const double distance = std::hypot(x - centerX, y - centerY) - radius;
                if (distance < 0)
                    SetPixel(frame, width, x, y, 1, paints[figure % 4]);
                const double line = std::clamp(2.0 - std::abs(distance), 0.0, 1.0);
                if (line > 0)
                    SetPixel(frame, width, x, y, line, black);
            }
    }
    return frame;
}

Frame MakeNoiseFrame(int width, int height) {
    Frame frame(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3);
    std::mt19937 random(3);
    for (std::uint8_t& value : frame)
        value = static_cast<std::uint8_t>(random());
    return frame;
}

void Encode(benchmark::State& state, const Frame& frame, int width, int height, int quality) {
    std::vector<std::uint8_t> encoded;
    for (auto _ : state) {
        EncodeMsVideo1(frame, width, height, quality, 0, encoded);
        benchmark::DoNotOptimize(encoded.data());
    }
    state.counters["bytes"] = static_cast<double>(encoded.size());
}

void EncodeCelFrame(benchmark::State& state) {
    const int width = static_cast<int>(state.range(0));
    const int height = static_cast<int>(state.range(1));
    Encode(state, MakeCelFrame(width, height), width, height, static_cast<int>(state.range(2)));
}

void EncodeNoiseFrame(benchmark::State& state) {
    const int width = static_cast<int>(state.range(0));
    const int height = static_cast<int>(state.range(1));
    Encode(state, MakeNoiseFrame(width, height), width, height, static_cast<int>(state.range(2)));
}

} // namespace

BENCHMARK(EncodeCelFrame)
    ->ArgNames({"width", "height", "quality"})
    ->Args({388, 292, 5000})
    ->Args({388, 292, 10000})
    ->Args({1920, 1080, 5000})
    ->Args({1920, 1080, 10000})
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(EncodeNoiseFrame)
    ->ArgNames({"width", "height", "quality"})
    ->Args({1920, 1080, 5000})
    ->Args({1920, 1080, 10000})
    ->Unit(benchmark::kMicrosecond);
