#pragma once

#include "platform/Progress.h"
#include "render/FlipbookSettings.h"
#include "render/FrameRequests.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace velmor {

/// What a flipbook is made from: a view on the document's values, which must not change meanwhile.
struct CFlipbookJob {
    Path output;
    CShot shot;                 ///< antialias as in the settings
    CFlipbookSettings settings; ///< accepted by CheckFlipbookSettings
    int cursorFrame = 0;        ///< whose camera pan and rotation all frames take
    int soundFrame = 0;         ///< where the sound starts in the track
    /// The prepared track; without one the movie is silent.
    std::optional<std::span<const std::uint8_t>> sound;
};

enum class FlipbookEnd { Complete, Stopped, Failed };

struct CFlipbookOutcome {
    FlipbookEnd end = FlipbookEnd::Complete;
    std::vector<std::string> messages; ///< to be shown in this order
};

/// Writes a flipbook, frames composed and encoded on all processors. `askStop` is called when a stop was requested:
/// true ends the movie after the frame just written. A failed one leaves the file that was there before.
CFlipbookOutcome GenerateFlipbook(const CFlipbookJob& job, CImageCache& cache, IProgress& progress,
                                  const std::function<bool()>& askStop);

/// What the compositor is asked for one frame of a flipbook (0-based).
CFrameRequest RequestFlipbookFrame(const CFlipbookJob& job, int frame);

/// The sound of `frames` frames from `firstFrame` on, silence beyond the end of the track.
std::vector<std::uint8_t> CutSound(std::span<const std::uint8_t> track, int framesPerSecond, int firstFrame,
                                   int frames);

} // namespace velmor
