#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace velmor::demo {

inline constexpr int soundRate = 22050; ///< samples per second

/// A sound of 8-bit samples, 128 for silence.
struct CDemoSound {
    std::string name;
    std::vector<std::uint8_t> samples;
};

/// A footstep with a plucked note of the tune, one sound for each note; the take-off, the landing, and the chime of
/// the end.
std::vector<CDemoSound> MakeSounds();

/// Names of the footstep sounds in the order of the steps.
std::vector<std::string> StepTune();
inline constexpr const char* leapSound = "Leap";
inline constexpr const char* landingSound = "Landing";
inline constexpr const char* chimeSound = "Chime";

} // namespace velmor::demo
