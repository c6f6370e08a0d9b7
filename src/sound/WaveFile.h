#pragma once

#include "platform/Files.h"
#include "platform/Status.h"

#include <cstdint>
#include <vector>

namespace velmor {

struct CWaveSound {
    int rate = 0; ///< samples per second
    std::vector<std::uint8_t> samples;
};

/// Reads an 8-bit mono PCM wave file (RIFF form WAVE) of any rate. The extension must be ".wav" in lower case. On
/// failure `sound` is unchanged.
CStatus ReadWaveFile(const Path& path, CWaveSound& sound);

} // namespace velmor
