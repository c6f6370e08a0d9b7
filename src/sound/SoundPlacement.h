#pragma once

#include <string>

namespace velmor {

/// A sound that starts at a frame of the xsheet, and what of it is heard there. The sound's file knows nothing of
/// it.
struct CSoundPlacement {
    static constexpr int leastLevel = -600; ///< and silent from there down
    static constexpr int mostLevel = 120;

    int frame = 0; ///< 0-based
    std::string name;
    int trimIn = 0;  ///< samples left out at its beginning, at samplesPerSecond; what follows starts at the frame
    int trimOut = 0; ///< samples left out at its end
    int level = 0;   ///< how much louder it is, in tenths of a decibel

    /// Whether it is heard as its file has it.
    bool IsPlain() const { return trimIn == 0 && trimOut == 0 && level == 0; }

    bool operator==(const CSoundPlacement&) const = default;
};

} // namespace velmor
