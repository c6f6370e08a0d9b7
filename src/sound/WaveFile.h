#pragma once

#include "platform/Status.h"
#include "platform/files/Files.h"

#include <cstdint>
#include <span>
#include <vector>

namespace velmor {

struct CWaveSound {
    int rate = 0; ///< samples per second
    std::vector<std::uint8_t> samples;
};

/// Takes the bytes of an 8-bit mono PCM wave file (RIFF form WAVE) of any rate apart. On failure `sound` is
/// unchanged.
CStatus DecodeWave(std::span<const std::uint8_t> file, CWaveSound& sound);

/// Reads such a file. The extension must be ".wav" in lower case.
CStatus ReadWaveFile(const Path& path, CWaveSound& sound);

} // namespace velmor
