#pragma once

#include <cstdint>
#include <span>

namespace velmor {

/// Writes pixels of 3 bytes to other memory, the first byte of each in the place of the last.
void SwapRedAndBlue(std::span<const std::uint8_t> pixels, std::uint8_t* swapped);

} // namespace velmor
