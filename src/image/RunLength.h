#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace velmor {

// The run-length coding of a cel file's planes: pairs of a value byte and a count byte. The writer never makes a
// run longer than 254; the reader accepts any count, 0 included.

struct CRun {
    std::uint8_t value = 0;
    std::uint8_t count = 0;
};
static_assert(sizeof(CRun) == 2, "runs are written as they stand in memory");

/// Appends the runs of `plane`.
void EncodeRuns(std::span<const std::uint8_t> plane, std::vector<CRun>& runs);

/// The least number of bytes that can stand for `pixels` pixels.
constexpr std::size_t LeastRunBytes(std::size_t pixels) {
    return (pixels + 254) / 255 * sizeof(CRun);
}

/// Fills `plane` from the pairs at the start of `bytes` and removes these from `bytes`. A run that would pass the
/// end of the plane is cut there. False when the bytes end before the plane is full.
[[nodiscard]] bool DecodeRuns(std::span<const std::uint8_t>& bytes, std::span<std::uint8_t> plane);

} // namespace velmor
