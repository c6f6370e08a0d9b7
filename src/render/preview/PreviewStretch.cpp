#include "render/preview/PreviewStretch.h"

#include "sound/SoundFile.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace velmor {

namespace {

constexpr double repeatedSeconds = 5 * 60;
constexpr double repeatedMixSeconds = 2 * 60; // a second of it takes seventeen times the memory

std::uint8_t Between(std::uint8_t left, std::uint8_t right, double part) {
    return static_cast<std::uint8_t>(std::lround(left * (1 - part) + right * part));
}

float Between(float left, float right, double part) {
    return static_cast<float>(left * (1 - part) + right * part);
}

/// The sound of a sheet, of which frames are cut.
template<class T>
struct CTrack {
    std::span<const T> samples;
    T silence{};
    std::size_t channels = 1;
    double rate = 0;                                ///< samples of a channel per second
    std::function<std::size_t(int frame)> offsetOf; ///< of a frame's first sample
};

CTrack<std::uint8_t> TrackOf(std::span<const std::uint8_t> track, int samplesPerFrame) {
    const auto size = static_cast<std::size_t>(samplesPerFrame);
    return {track, silentSample, 1, samplesPerSecond,
            [size](int frame) { return static_cast<std::size_t>(frame) * size; }};
}

CTrack<float> TrackOf(const CMixedSound& mixed, int framesPerSecond) {
    return {mixed.stereo, 0, mixChannels, mixRate,
            [framesPerSecond](int frame) { return MixedBefore(frame, framesPerSecond) * mixChannels; }};
}

template<class T>
void Append(std::vector<T>& samples, const CTrack<T>& track, std::size_t from, std::size_t to) {
    const std::size_t end = samples.size() + (to - from);
    if (from < track.samples.size())
        samples.insert(samples.end(), track.samples.begin() + static_cast<std::ptrdiff_t>(from),
                       track.samples.begin() + static_cast<std::ptrdiff_t>(std::min(to, track.samples.size())));
    samples.resize(end, track.silence);
}

template<class T>
std::vector<T> AtSpeed(const std::vector<T>& samples, std::size_t channels, double speed) {
    const std::size_t count = samples.size() / channels;
    std::vector<T> changed(static_cast<std::size_t>(std::llround(static_cast<double>(count) / speed)) * channels);
    for (std::size_t i = 0; i < changed.size(); ++i) {
        const double at = static_cast<double>(i / channels) * speed;
        const auto left = std::min(static_cast<std::size_t>(at), count - 1);
        const auto right = std::min(left + 1, count - 1);
        const std::size_t channel = i % channels;
        changed[i] = Between(samples[left * channels + channel], samples[right * channels + channel],
                             at - static_cast<double>(left));
    }
    return changed;
}

template<class T>
std::vector<T> SoundOfFrame(const CTrack<T>& track, int frame) {
    std::vector<T> samples;
    Append(samples, track, track.offsetOf(frame), track.offsetOf(frame + 1));
    return samples;
}

template<class T>
std::vector<T> Stretch(const CTrack<T>& track, const CPreviewPlay& play, double mostSeconds) {
    const std::size_t begin = track.offsetOf(play.range.first);
    const std::size_t end = track.offsetOf(play.range.last + 1);
    std::vector<T> samples;
    Append(samples, track, track.offsetOf(play.start), end);
    const auto most = static_cast<std::size_t>(mostSeconds * track.rate * play.speed) * track.channels;
    if (play.loops)
        samples.reserve(std::max(samples.size() + (end - begin), most));
    do {
        if (play.loops)
            Append(samples, track, begin, end);
    } while (play.loops && samples.size() + (end - begin) <= most);
    return play.speed != 1 ? AtSpeed(samples, track.channels, play.speed) : samples;
}

} // namespace

std::vector<std::uint8_t> FrameSound(std::span<const std::uint8_t> track, int samplesPerFrame, int frame) {
    return SoundOfFrame(TrackOf(track, samplesPerFrame), frame);
}

std::vector<float> FrameSound(const CMixedSound& mixed, int framesPerSecond, int frame) {
    return SoundOfFrame(TrackOf(mixed, framesPerSecond), frame);
}

CPreviewStretch StretchOf(std::span<const std::uint8_t> track, int samplesPerFrame, const CPreviewPlay& play) {
    return {Stretch(TrackOf(track, samplesPerFrame), play, repeatedSeconds), play.speed / samplesPerFrame};
}

CMixStretch StretchOf(const CMixedSound& mixed, int framesPerSecond, const CPreviewPlay& play) {
    // Where a frame is no whole number of samples, a round is shorter than its frames by a part of one; over many
    // rounds that would be heard.
    const std::size_t round =
        MixedBefore(play.range.last + 1, framesPerSecond) - MixedBefore(play.range.first, framesPerSecond);
    const double framesPerSample = play.loops && round > 0 ? play.range.Count() / static_cast<double>(round)
                                                           : framesPerSecond / static_cast<double>(mixRate);
    return {Stretch(TrackOf(mixed, framesPerSecond), play, repeatedMixSeconds), play.speed * framesPerSample};
}

} // namespace velmor
