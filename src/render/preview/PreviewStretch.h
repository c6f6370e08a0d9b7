#pragma once

#include "render/preview/PreviewPlayer.h"

#include <cstdint>
#include <span>
#include <vector>

namespace velmor {

/// The sound of frames as they are played.
struct CPreviewStretch {
    std::vector<std::uint8_t> samples;
    double framesPerSample = 0;
};

/// Samples of one frame; silence where the track ends before.
std::vector<std::uint8_t> FrameSound(std::span<const std::uint8_t> track, int samplesPerFrame, int frame);

/// The part of a prepared track under the frames of a range from `start` on. When it loops the range follows again
/// and again, as often as a few minutes hold, so that no gap is heard where it begins anew. Another speed than 1 is
/// heard as with a tape, slower and lower.
CPreviewStretch StretchOf(std::span<const std::uint8_t> track, int samplesPerFrame, CPreviewRange range, int start,
                          bool loops, double speed);

} // namespace velmor
