#include "sound/SoundMix.h"

#include "sound/SoundFile.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <new>
#include <numbers>
#include <numeric>

namespace velmor {

namespace {

// Of the way from one sample to the next there are as many places as the rates ask for.
constexpr int step = samplesPerSecond / std::gcd(samplesPerSecond, mixRate);
constexpr int places = mixRate / std::gcd(samplesPerSecond, mixRate);
constexpr int reach = 16; ///< samples on either side that a place between two of them depends on
constexpr int taps = 2 * reach;

using Filter = std::vector<std::array<float, taps>>;

// A sine cardinal under a Blackman window. Each place's weights make up 1, so that what stands still stays.
Filter MakeFilter() {
    Filter filter(places);
    for (int place = 0; place < places; ++place) {
        std::array<double, taps> weights{};
        double sum = 0;
        for (int tap = 0; tap < taps; ++tap) {
            const double distance = tap - (reach - 1) - static_cast<double>(place) / places;
            const double angle = std::numbers::pi * distance;
            const double window = 0.42 + 0.5 * std::cos(angle / reach) + 0.08 * std::cos(2 * angle / reach);
            const auto at = static_cast<std::size_t>(tap);
            weights[at] = (distance == 0 ? 1 : std::sin(angle) / angle) * window;
            sum += weights[at];
        }
        std::ranges::transform(weights, filter[static_cast<std::size_t>(place)].begin(),
                               [sum](double weight) { return static_cast<float>(weight / sum); });
    }
    return filter;
}

void AddAt(std::span<const float> sound, float gain, std::size_t from, std::span<float> stereo) {
    if (from >= stereo.size())
        return;
    const std::size_t count = std::min(sound.size(), stereo.size() - from);
    for (std::size_t i = 0; i < count; ++i)
        stereo[from + i] += gain * sound[i];
}

/// Samples of a channel of the mix that as many of a sound's are.
std::size_t MixedOf(int samples) {
    return static_cast<std::size_t>(samples) * places / step;
}

using Places = std::map<std::string, std::vector<CSoundPlacement>>;

/// Adds the sounds of a sheet up, one after the other.
class CMixing {
public:
    CMixing(int frameCount, int framesPerSecond)
        : m_framesPerSecond(framesPerSecond),
          m_length(MixedBefore(frameCount, framesPerSecond)),
          m_stereo(m_length * mixChannels) {}

    CStatus AddAll(const Places& sounds, const StereoLoader& load) {
        std::vector<float> sound;
        for (const auto& [name, placed] : sounds) {
            sound.clear();
            if (CStatus status = load(name, MostHeard(placed), sound); !status)
                return status;
            for (const CSoundPlacement& place : placed)
                Add(sound, place);
        }
        return {};
    }
    std::vector<float> Take() { return std::move(m_stereo); }

private:
    /// Samples from a sound's beginning to the last one that the sheet has room for.
    std::size_t MostHeard(const std::vector<CSoundPlacement>& sounds) const {
        std::size_t most = 0;
        for (const CSoundPlacement& place : sounds)
            most = std::max(most, m_length - MixedBefore(place.frame, m_framesPerSecond) + MixedOf(place.trimIn) +
                                      MixedOf(place.trimOut));
        return most;
    }
    void Add(std::span<const float> sound, const CSoundPlacement& place) {
        const auto heard =
            HeardOf(sound, MixedOf(place.trimIn) * mixChannels, MixedOf(place.trimOut) * mixChannels);
        AddAt(heard, static_cast<float>(GainOf(place)), MixedBefore(place.frame, m_framesPerSecond) * mixChannels,
              m_stereo);
    }

    int m_framesPerSecond;
    std::size_t m_length; ///< of the sheet, in samples of a channel
    std::vector<float> m_stereo;
};

float KeepWithinScale(std::vector<float>& stereo) {
    float peak = 0;
    for (float& sample : stereo) {
        if (!std::isfinite(sample))
            sample = 0;
        peak = std::max(peak, std::abs(sample));
    }
    if (peak <= 1)
        return 1;
    const float scale = 1 / peak;
    for (float& sample : stereo)
        sample = std::clamp(sample * scale, -1.0F, 1.0F);
    return scale;
}

} // namespace

std::size_t MixedBefore(int frame, int framesPerSecond) {
    return static_cast<std::size_t>(std::max(frame, 0)) * mixRate /
           static_cast<std::size_t>(std::max(framesPerSecond, 1));
}

CStatus MixSounds(const std::vector<CSoundPlacement>& placements, int frameCount, int framesPerSecond,
                  const StereoLoader& load, CMixedSound& mixed) {
    mixed = {};
    try {
        Places sounds;
        for (const CSoundPlacement& placement : placements)
            if (placement.frame >= 0 && placement.frame < frameCount)
                sounds[placement.name].push_back(placement);
        CMixing mixing(frameCount, framesPerSecond);
        if (CStatus status = mixing.AddAll(sounds, load); !status)
            return status;
        std::vector<float> stereo = mixing.Take();
        mixed.scale = KeepWithinScale(stereo);
        mixed.stereo = std::move(stereo);
        return {};
    } catch (const std::bad_alloc&) {
        return CStatus::Failure("There is not enough memory for the sound of the xsheet.");
    }
}

std::vector<float> StereoOf(std::span<const std::uint8_t> samples, std::size_t most) {
    const Filter filter = MakeFilter();
    // Silence before and behind, so that every place has its neighbours.
    std::vector<float> source(samples.size() + taps);
    std::ranges::transform(samples, source.begin() + reach - 1, [](std::uint8_t sample) {
        return static_cast<float>(sample - silentSample) / silentSample;
    });
    const std::size_t count = std::min(samples.size() * places / step, most);
    std::vector<float> stereo(count * mixChannels);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t place = i * step;
        const float* from = source.data() + place / places;
        const auto& weights = filter[place % places];
        const float value = std::inner_product(weights.begin(), weights.end(), from, 0.0F);
        stereo[2 * i] = stereo[2 * i + 1] = value;
    }
    return stereo;
}

} // namespace velmor
