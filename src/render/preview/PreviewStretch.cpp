#include "render/preview/PreviewStretch.h"

#include "sound/SoundFile.h"

#include <algorithm>
#include <cmath>

namespace velmor {

namespace {

constexpr std::size_t mostRepeated = std::size_t{5} * 60 * samplesPerSecond;

void Append(std::vector<std::uint8_t>& samples, std::span<const std::uint8_t> track, std::size_t from,
            std::size_t to) {
    const std::size_t end = samples.size() + (to - from);
    if (from < track.size())
        samples.insert(samples.end(), track.begin() + static_cast<std::ptrdiff_t>(from),
                       track.begin() + static_cast<std::ptrdiff_t>(std::min(to, track.size())));
    samples.resize(end, silentSample);
}

std::vector<std::uint8_t> AtSpeed(const std::vector<std::uint8_t>& samples, double speed) {
    std::vector<std::uint8_t> changed(
        static_cast<std::size_t>(std::llround(static_cast<double>(samples.size()) / speed)));
    for (std::size_t i = 0; i < changed.size(); ++i) {
        const double at = static_cast<double>(i) * speed;
        const auto left = std::min(static_cast<std::size_t>(at), samples.size() - 1);
        const auto right = std::min(left + 1, samples.size() - 1);
        const double part = at - static_cast<double>(left);
        changed[i] = static_cast<std::uint8_t>(std::lround(samples[left] * (1 - part) + samples[right] * part));
    }
    return changed;
}

} // namespace

std::vector<std::uint8_t> FrameSound(std::span<const std::uint8_t> track, int samplesPerFrame, int frame) {
    const auto size = static_cast<std::size_t>(samplesPerFrame);
    const std::size_t from = static_cast<std::size_t>(frame) * size;
    std::vector<std::uint8_t> samples;
    Append(samples, track, from, from + size);
    return samples;
}

CPreviewStretch StretchOf(std::span<const std::uint8_t> track, int samplesPerFrame, CPreviewRange range, int start,
                          bool loops, double speed) {
    const auto offsetOf = [&](int frame) {
        return static_cast<std::size_t>(frame) * static_cast<std::size_t>(samplesPerFrame);
    };
    const std::size_t end = offsetOf(range.last + 1);
    const std::size_t length = end - offsetOf(range.first);
    CPreviewStretch stretch;
    Append(stretch.samples, track, offsetOf(start), end);
    const auto most = static_cast<std::size_t>(static_cast<double>(mostRepeated) * speed);
    do {
        if (loops)
            Append(stretch.samples, track, offsetOf(range.first), end);
    } while (loops && stretch.samples.size() + length <= most);
    if (speed != 1)
        stretch.samples = AtSpeed(stretch.samples, speed);
    stretch.framesPerSample = speed / samplesPerFrame;
    return stretch;
}

} // namespace velmor
