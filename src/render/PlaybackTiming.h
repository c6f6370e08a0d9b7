#pragma once

#include <array>
#include <cstdint>

namespace velmor {

/// Milliseconds of a clock that never goes back.
using Milliseconds = std::int64_t;

/// When the movie player draws, and how fast it really is. Time is handed in, so that a run of the player can be
/// tested as a list of steps. At most one frame is due at a step; late frames are neither skipped nor made up for.
class CPlaybackTiming {
public:
    static constexpr int framesPerAnchor = 400; ///< then time is counted anew, which bounds drift
    static constexpr int patience = 40;         ///< slow frames in a row before the warning

    /// `rate` in frames a second, above 0.
    explicit CPlaybackTiming(double rate);

    /// Milliseconds a frame, cut off to whole ones.
    Milliseconds Period() const { return m_period; }
    void Start(Milliseconds now);
    /// Whether a frame is to be drawn now; it then counts as drawn.
    bool Step(Milliseconds now);
    /// From when on Step() draws the next frame.
    Milliseconds NextDue() const { return m_anchor + m_framesSinceAnchor * m_period + 1; }

    double TargetRate() const { return m_target; }
    /// Mean of the last five frames.
    double MeasuredRate() const { return m_measured; }
    /// Within one frame a second of the target.
    bool IsOnRate() const;
    /// True once in a run of slow frames: at the step that drew its fortieth.
    bool IsTimeToWarn() const { return m_isTimeToWarn; }

private:
    void MoveAnchor(Milliseconds now);
    void Measure(Milliseconds elapsed);

    double m_target;
    Milliseconds m_period;
    Milliseconds m_anchor = 0;
    Milliseconds m_lastDraw = 0;
    int m_framesSinceAnchor = 0;
    std::array<double, 5> m_history{};
    double m_measured = 0;
    int m_slowFrames = 0;
    bool m_isTimeToWarn = false;
};

/// The clock of a movie with sound: the wall clock's steps, held to what the sound device has really played, so
/// that picture and sound neither start apart nor drift apart. One frame of sound counts as one period of the
/// timing, whatever the period's rounding.
class CSoundClock {
public:
    /// More than this apart, the clock is set to the sound. Half of the portions in which a device takes its
    /// samples: with less, their steps would make the picture stutter.
    static constexpr Milliseconds tolerance = 12;

    /// `rate` in frames a second; `period` the timing's.
    CSoundClock(double rate, Milliseconds period);

    /// The time, given the wall clock's. It stands still rather than go back.
    Milliseconds Now(Milliseconds wall) const;
    /// The sound starts now, with its first sample.
    void StartSound(Milliseconds wall);
    /// Where the sound is, in seconds since its start.
    void Follow(Milliseconds wall, double soundSeconds);
    /// The sound has ended; the wall clock goes on alone.
    void EndSound() { m_follows = false; }

private:
    double Advanced(Milliseconds wall) const;

    double m_stretch;        ///< clock milliseconds per real one
    double m_base = 0;       ///< clock time at m_wallBase
    double m_soundStart = 0; ///< clock time of the sound's first sample
    Milliseconds m_wallBase = 0;
    bool m_follows = false;
    mutable double m_latest = 0;
};

} // namespace velmor
