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

/// Reads the values that runs stand for, some at a time.
class CRunReader {
public:
    CRunReader() = default;
    explicit CRunReader(std::span<const std::uint8_t> pairs);

    /// Fills `values` with the next ones. False when the bytes end before.
    [[nodiscard]] bool Read(std::span<std::uint8_t> values);
    /// Passes over the next `count` values. False when the bytes end before.
    [[nodiscard]] bool Skip(std::size_t count);
    /// The bytes behind the last run of which a value was read.
    std::span<const std::uint8_t> Rest() const { return {m_at, static_cast<std::size_t>(m_end - m_at)}; }

private:
    bool BeginNext();
    void SkipManyRuns(std::size_t& count);

    const std::uint8_t* m_at = nullptr;
    const std::uint8_t* m_end = nullptr;
    std::size_t m_left = 0; ///< values of the run before m_at that were not read yet
    std::uint8_t m_value = 0;
};

/// Fills `plane` from the pairs at the start of `bytes` and removes these from `bytes`. A run that would pass the
/// end of the plane is cut there. False when the bytes end before the plane is full.
[[nodiscard]] bool DecodeRuns(std::span<const std::uint8_t>& bytes, std::span<std::uint8_t> plane);

} // namespace velmor
