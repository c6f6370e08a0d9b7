#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace velmor {

/// A compressor for render output, which makes the frames of an AVI.
struct CCompressor {
    std::string_view name;        ///< by which it is chosen and remembered
    std::string_view description; ///< what is said of it behind its name
    std::string_view encoder;     ///< FFmpeg's name, which is taken as a name as well
    bool isOurs = false;          ///< made by this program, without FFmpeg
    bool hasQuality = false;      ///< loses something, and the quality says how much
};

/// The one that is taken when nobody chooses.
inline constexpr std::string_view defaultCompressor = "MSVC";

/// What this system has, the default first.
std::vector<CCompressor> AvailableCompressors();
/// The available compressor of a name, upper and lower case alike; null when there is none.
const CCompressor* FindCompressor(std::string_view name);

} // namespace velmor
