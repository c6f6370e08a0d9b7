#pragma once

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>

namespace velmor {

/// A sound that starts at a frame of the xsheet, and what of it is heard there. The sound's file knows nothing of
/// it.
struct CSoundPlacement {
    static constexpr int leastLevel = -600; ///< is silence
    static constexpr int mostLevel = 120;

    int frame = 0; ///< 0-based
    std::string name;
    int trimIn = 0;  ///< samples left out at its beginning, at samplesPerSecond; what follows starts at the frame
    int trimOut = 0; ///< samples left out at its end
    int level = 0;   ///< how much louder it is, in tenths of a decibel

    /// Whether it is heard as its file has it.
    bool IsPlain() const { return trimIn == 0 && trimOut == 0 && level == 0; }
    /// Whether its values are such as may be: what is in files may be anything.
    bool IsSane() const { return trimIn >= 0 && trimOut >= 0 && level >= leastLevel && level <= mostLevel; }

    bool operator==(const CSoundPlacement&) const = default;
};

/// What a placed sound's samples are multiplied by.
double GainOf(const CSoundPlacement& placement);

/// What is heard of a sound's samples when so many are left out at its ends; none when all are.
template<class T>
std::span<T> HeardOf(std::span<T> samples, std::size_t trimIn, std::size_t trimOut) {
    const std::size_t from = std::min(trimIn, samples.size());
    return samples.subspan(from, samples.size() - from - std::min(trimOut, samples.size() - from));
}

/// How many of a sound's samples are heard.
inline std::size_t HeardLength(std::size_t samples, const CSoundPlacement& placement) {
    const std::size_t from = std::min(static_cast<std::size_t>(placement.trimIn), samples);
    return samples - from - std::min(static_cast<std::size_t>(placement.trimOut), samples - from);
}

} // namespace velmor
