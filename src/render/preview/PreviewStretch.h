#pragma once

#include "render/preview/PreviewPlayer.h"
#include "sound/SoundMix.h"

#include <cstdint>
#include <span>
#include <vector>

namespace velmor {

/// How frames are played.
struct CPreviewPlay {
    CPreviewRange range;
    int start = 0; ///< a frame of the range
    bool loops = false;
    double speed = 1;
};

/// The sound of frames as they are played.
struct CPreviewStretch {
    std::vector<std::uint8_t> samples;
    double framesPerSample = 0;
};

/// Samples of one frame; silence where the track ends before.
std::vector<std::uint8_t> FrameSound(std::span<const std::uint8_t> track, int samplesPerFrame, int frame);

/// The part of a prepared track under the frames of a range from the start on. When it loops the range follows
/// again and again, as often as a few minutes hold, so that no gap is heard where it begins anew. Another speed
/// than 1 is heard as with a tape, slower and lower.
CPreviewStretch StretchOf(std::span<const std::uint8_t> track, int samplesPerFrame, const CPreviewPlay& play);

/// The same of a mix.
struct CMixStretch {
    std::vector<float> stereo;  ///< left and right in turn, at mixRate
    double framesPerSample = 0; ///< of a channel
};

std::vector<float> FrameSound(const CMixedSound& mixed, int framesPerSecond, int frame);
CMixStretch StretchOf(const CMixedSound& mixed, int framesPerSecond, const CPreviewPlay& play);

} // namespace velmor
