#pragma once

#include <cstdint>
#include <span>

namespace velmor {

/// A number that tells contents apart, the same on every machine and in every version. Nothing that could hold
/// against somebody who wants two contents to look alike.
std::uint64_t ContentHash(std::span<const std::uint8_t> bytes);

} // namespace velmor
