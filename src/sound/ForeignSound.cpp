#include "sound/ForeignSound.h"

#include "sound/SoundFile.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <new>

namespace velmor {

namespace {

std::string ChannelsText(int channels) {
    return channels == 1 ? "mono" : channels == 2 ? "stereo" : std::to_string(channels) + " channels";
}

std::string CodingText(const CSoundForm& form) {
    if (form.coding.starts_with("pcm_") && form.bits > 0)
        return std::to_string(form.bits) + " bit";
    std::string text = form.coding;
    std::ranges::transform(text, text.begin(), [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

/// Numbers that look random, from 0 to 1, the same in every run.
class CNoise {
public:
    float Next() {
        m_state = m_state * 1664525 + 1013904223;
        return static_cast<float>(m_state >> 8) / static_cast<float>(1 << 24);
    }

private:
    std::uint32_t m_state = 1;
};

float Finite(float sample) {
    return std::isfinite(sample) ? sample : 0.0F;
}

int PercentOf(std::size_t samples, double seconds) {
    const double whole = seconds * samplesPerSecond;
    return whole > 0 ? static_cast<int>(std::min(99.0, 100 * static_cast<double>(samples) / whole)) : 0;
}

CConvertedSound Refused(const char* text) {
    return {CStatus::Failure(text), false, {}};
}

CConvertedSound ConvertAll(CSoundReader& reader, IProgress& progress) {
    constexpr std::size_t most = std::size_t{mostConvertedSeconds} * samplesPerSecond;
    std::vector<float> samples;
    int shown = -1;
    while (reader.Read({samplesPerSecond, 1}, samples)) {
        if (samples.size() > most)
            return Refused("The sound is longer than an hour, which is more than any xsheet can hold.");
        if (const int percent = PercentOf(samples.size(), reader.Form().seconds); percent != shown)
            progress.Report(shown = percent, "Converting Sound...");
        if (progress.TakeStopRequest())
            return {{}, true, {}};
    }
    if (!reader.IsWhole())
        return Refused("Corrupt audio file!");
    if (samples.empty())
        return Refused("Empty audio file!");
    return {{}, false, InOwnForm(samples)};
}

} // namespace

std::string DescriptionOf(const CSoundForm& form) {
    return ChannelsText(form.channels) + ", " + std::to_string(form.rate) + " Hz, " + CodingText(form) +
           (form.isMovie ? ", of a movie" : "");
}

std::vector<std::uint8_t> InOwnForm(std::span<const float> samples) {
    float peak = 1;
    for (const float sample : samples)
        peak = std::max(peak, std::abs(Finite(sample)));
    constexpr float fullScale = 127;
    const float scale = fullScale / peak;
    std::vector<std::uint8_t> bytes(samples.size());
    CNoise noise;
    float before = noise.Next();
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const float now = noise.Next();
        const float sample = Finite(samples[i]);
        // The difference of two random numbers hides the rounding best; of neighbours, it is loudest where ears
        // are weakest.
        const float value = sample == 0 ? 0 : sample * scale + now - before;
        bytes[i] = static_cast<std::uint8_t>(std::clamp(std::lround(value) + silentSample, 0L, 255L));
        before = now;
    }
    return bytes;
}

CConvertedSound ConvertSound(CSoundReader& reader, IProgress& progress) {
    try {
        return ConvertAll(reader, progress);
    } catch (const std::bad_alloc&) {
        return Refused("There is not enough memory to convert the sound.");
    }
}

} // namespace velmor
