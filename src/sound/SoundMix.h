#pragma once

#include "platform/Status.h"
#include "sound/SoundPlacement.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace velmor {

inline constexpr int mixRate = 48000; ///< samples of a channel per second
inline constexpr int mixChannels = 2; ///< left and right in turn

/// The sound of an xsheet in full quality.
struct CMixedSound {
    std::vector<float> stereo; ///< left and right in turn, -1.0 to 1.0
    float scale = 1;           ///< what all of it was multiplied by, so that where sounds add up nothing is cut off
};

/// Samples of a channel before a frame.
std::size_t MixedBefore(int frame, int framesPerSecond);

/// Loads a sound by its name, left and right in turn at mixRate; what is beyond `most` samples of a channel is not
/// heard.
using StereoLoader = std::function<CStatus(const std::string& name, std::size_t most, std::vector<float>& stereo)>;

/// Adds up the placed sounds of a whole xsheet, each loaded once. Where they overlap both are heard. On failure
/// (the first that cannot be loaded) `mixed` is empty.
CStatus MixSounds(const std::vector<CSoundPlacement>& placements, int frameCount, int framesPerSecond,
                  const StereoLoader& load, CMixedSound& mixed);

/// A sound in the form of all sounds as the mix takes it, at most `most` samples of a channel: what is between its
/// samples follows them smoothly.
std::vector<float> StereoOf(std::span<const std::uint8_t> samples, std::size_t most);

} // namespace velmor
