#include "sound/SoundPeaks.h"

#include "sound/SoundFile.h"

#include <algorithm>
#include <cmath>

namespace velmor {

CPeak Louder(CPeak peak, double gain) {
    const auto louder = [gain](std::uint8_t sample) {
        return static_cast<std::uint8_t>(
            std::clamp(std::lround((sample - silentSample) * gain) + silentSample, 0L, 255L));
    };
    return {louder(peak.low), louder(peak.high)};
}

CSoundPeaks::CSoundPeaks(std::span<const std::uint8_t> samples) : m_length(samples.size()) {
    m_peaks.reserve((samples.size() + stretch - 1) / stretch);
    for (std::size_t at = 0; at < samples.size(); at += stretch) {
        const auto [low, high] = std::ranges::minmax(samples.subspan(at, std::min(stretch, samples.size() - at)));
        m_peaks.push_back({low, high});
    }
}

CPeak CSoundPeaks::Between(std::uint64_t first, std::uint64_t end) const {
    end = std::min(end, m_length);
    if (first >= end)
        return {};
    const auto from = m_peaks.begin() + static_cast<std::ptrdiff_t>(first / stretch);
    const auto to = m_peaks.begin() + static_cast<std::ptrdiff_t>((end + stretch - 1) / stretch);
    CPeak peak = *from;
    for (const CPeak& part : std::span(from, to))
        peak = {std::min(peak.low, part.low), std::max(peak.high, part.high)};
    return peak;
}

} // namespace velmor
