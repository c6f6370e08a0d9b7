#pragma once

#include "platform/Status.h"
#include "platform/files/Files.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace velmor {

/// The one rate of all sounds: samples (8-bit unsigned mono, 128 is silence) per second.
constexpr int samplesPerSecond = 22050;
constexpr std::uint8_t silentSample = 128;

/// Number of samples after ConvertToSoundRate(); `rate` at least 1.
std::uint64_t ConvertedCount(int rate, std::uint64_t count);

/// Nearest earlier sample, no filtering; `rate` in samples per second, at least 1.
std::vector<std::uint8_t> ConvertToSoundRate(int rate, std::span<const std::uint8_t> samples);

/// Outcome of WriteSound: `done` says whether the caller carries on, `message` is shown when not empty. When the
/// samples could not be written nothing of them is left, a file that was there before stands as it was, and the
/// caller carries on all the same.
struct CSoundWriteResult {
    bool done = true;
    std::string message;
};

/// Writes a ".sound" file, converted to samplesPerSecond. An existing file is replaced. A rate below 1 and a sound
/// that has no samples (after the conversion) are refused.
CSoundWriteResult WriteSound(const Path& path, int rate, std::span<const std::uint8_t> samples);

/// Reads a ".sound" file. `name` is the sound's name for the message; on failure `samples` is empty.
CStatus LoadSoundFile(const Path& path, const std::string& name, std::vector<std::uint8_t>& samples);

} // namespace velmor
