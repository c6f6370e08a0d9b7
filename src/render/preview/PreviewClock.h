#pragma once

#include "render/PlaybackTiming.h"

namespace velmor {

/// How many frames of a preview have been played: by the wall clock, held to what a sound device has really played
/// where there is sound.
class CPreviewClock {
public:
    /// `rate` in frames a second, above 0. The first frame becomes due at `now`; with sound, its first sample does.
    CPreviewClock(double rate, Milliseconds now, bool hasSound);

    /// What the device has played, in frames.
    void Follow(Milliseconds now, double heardFrames);
    /// The sound has ended; the wall clock goes on alone.
    void EndSound() { m_clock.EndSound(); }
    /// Frames with their fractions.
    double Played(Milliseconds now) const;

private:
    double m_rate;
    Milliseconds m_period;
    Milliseconds m_start;
    CSoundClock m_clock;
};

} // namespace velmor
