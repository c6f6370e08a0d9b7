#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace velmor {

/// The lowest and the highest sample of a stretch; a stretch without samples is silent.
struct CPeak {
    std::uint8_t low = 128;
    std::uint8_t high = 128;

    bool operator==(const CPeak&) const = default;
};

/// The extremes of the same samples multiplied by `gain`, within what samples can be.
CPeak Louder(CPeak peak, double gain);

/// What is drawn of a sound: its extremes in short stretches, from which those of any longer one follow.
class CSoundPeaks {
public:
    static constexpr std::size_t stretch = 16; ///< samples, far less than a line of a frame's row

    CSoundPeaks() = default;
    explicit CSoundPeaks(std::span<const std::uint8_t> samples);

    /// Samples of the sound.
    std::uint64_t Length() const { return m_length; }
    /// The extremes of the samples from `first` to before `end`, to a stretch.
    CPeak Between(std::uint64_t first, std::uint64_t end) const;

private:
    std::uint64_t m_length = 0;
    std::vector<CPeak> m_peaks;
};

} // namespace velmor
