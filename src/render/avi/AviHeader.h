#pragma once

#include "render/avi/AviWriter.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace velmor {

/// The counts in an AVI header that are known only when the file is complete.
struct CAviCounts {
    int videoSamples = 0;
    std::uint32_t soundSamples = 0; ///< 0 leaves the sound stream out
    std::uint32_t largestChunk = 0;
    std::uint64_t moviBytes = 4; ///< size of the list of chunks, its type "movi" included
    std::uint64_t fileBytes = 0;
};

/// Everything from the start of the file to the type "movi" of the list of chunks. The length depends only on
/// whether there is sound, so the header can be replaced when the counts are known.
std::vector<std::uint8_t> MakeAviHeader(const CAviSettings& settings, const CAviCounts& counts);

/// Appends in the order of RIFF: low byte first.
void PutAviInt(std::vector<std::uint8_t>& bytes, std::uint32_t value, int count = 4);
void PutAviName(std::vector<std::uint8_t>& bytes, std::string_view name);

} // namespace velmor
