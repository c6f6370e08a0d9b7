#pragma once

#include "platform/Progress.h"
#include "platform/Status.h"
#include "platform/movie/SoundReader.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace velmor {

/// What a sound is, for who is asked about it: "stereo, 48000 Hz, FLAC".
std::string DescriptionOf(const CSoundForm& form);

/// The form of all sounds (8-bit unsigned, 128 is silence) of samples whose full scale is 1.0. What is louder makes
/// the whole quieter, so that nothing is cut off. Rounding is hidden in noise of high frequency, the same each
/// time; true silence stays silent.
std::vector<std::uint8_t> InOwnForm(std::span<const float> samples);

struct CConvertedSound {
    CStatus status;
    bool stopped = false;              ///< by the user; nothing is wrong then
    std::vector<std::uint8_t> samples; ///< at the rate of sounds; empty when stopped or failed
};

/// The longest sound that is converted; no xsheet has as many seconds.
inline constexpr int mostConvertedSeconds = 3600;

/// Converts all that `reader`, which has just been opened, reads.
CConvertedSound ConvertSound(CSoundReader& reader, IProgress& progress);

} // namespace velmor
