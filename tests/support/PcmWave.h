#pragma once

#include <cmath>
#include <cstdint>
#include <functional>
#include <numbers>
#include <string_view>
#include <vector>

namespace velmor::testing {

/// The value of a channel at a sample, full scale 1.
using WaveValue = std::function<double(int channel, int sample)>;

/// The bytes of a PCM wave file of 16 or 24 bits.
inline std::vector<std::uint8_t> PcmWave(int rate, int channels, int bits, int count, const WaveValue& value) {
    std::vector<std::uint8_t> bytes;
    const auto put = [&](std::int64_t number, int size) {
        for (int i = 0; i < size; ++i)
            bytes.push_back(static_cast<std::uint8_t>(number >> 8 * i));
    };
    const auto name = [&](std::string_view text) { bytes.insert(bytes.end(), text.begin(), text.end()); };
    const int frameBytes = channels * bits / 8;
    name("RIFF");
    put(36 + count * frameBytes, 4);
    name("WAVEfmt ");
    put(16, 4);
    put(1, 2);
    put(channels, 2);
    put(rate, 4);
    put(rate * frameBytes, 4);
    put(frameBytes, 2);
    put(bits, 2);
    name("data");
    put(count * frameBytes, 4);
    const double scale = std::ldexp(1.0, bits - 1) - 1;
    for (int sample = 0; sample < count; ++sample)
        for (int channel = 0; channel < channels; ++channel)
            put(std::lround(value(channel, sample) * scale), bits / 8);
    return bytes;
}

/// A tone of `hertz` at a sample.
inline double Tone(double hertz, double sample, int rate) {
    return std::sin(2 * std::numbers::pi * hertz * sample / rate);
}

} // namespace velmor::testing
