#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace velmor {

/// Bytes in which few values change, such as the difference of two states of a tile, made short: runs of one value
/// and stretches of different ones, each behind a 16-bit length whose highest bit marks a run. Not more than 32767
/// bytes fit in. May throw std::bad_alloc.
std::vector<std::uint8_t> PackBytes(std::span<const std::uint8_t> bytes);
/// The bytes again; nothing when they are not exactly `size`.
std::optional<std::vector<std::uint8_t>> UnpackBytes(std::span<const std::uint8_t> packed, std::size_t size);

} // namespace velmor
