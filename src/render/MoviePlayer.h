#pragma once

#include "render/PlaybackTiming.h"

#include <algorithm>
#include <optional>

namespace velmor {

/// What the movie player does, without window, file or clock: its current frame, and pass after pass what is due
/// while it plays.
class CMoviePlayer {
public:
    /// What a pass of the playing loop is to do, in this order.
    struct CPass {
        bool startSound = false;
        std::optional<int> draw; ///< a frame
        bool hasEnded = false;   ///< playing stops behind the last frame, and the first one is current again
        bool warn = false;       ///< the machine cannot keep up; said once in a run of slow frames
    };

    /// `frameCount` at least 1; `rate` in frames a second.
    CMoviePlayer(int frameCount, double rate, bool hasSound)
        : m_frameCount(frameCount), m_hasSound(hasSound), m_timing(rate) {}

    int CurrentFrame() const { return m_frame; }
    int FrameCount() const { return m_frameCount; }
    bool IsPlaying() const { return m_isPlaying; }
    bool Loops() const { return m_loops; }
    void SetLoop(bool loops) { m_loops = loops; }
    const CPlaybackTiming& Timing() const { return m_timing; }

    /// Frames beyond the ends are those at the ends. Playing goes on from there; at frame 0 the sound starts anew.
    void GoTo(int frame) {
        m_frame = std::clamp(frame, 0, m_frameCount - 1);
        m_soundStarted = false;
    }
    void Previous() { GoTo(m_frame - 1); }
    void Next() { GoTo(m_frame + 1); }

    void Play(Milliseconds now);
    void Stop() { m_isPlaying = false; }
    CPass Pass(Milliseconds now);

private:
    int m_frameCount;
    bool m_hasSound;
    CPlaybackTiming m_timing;
    int m_frame = 0;
    bool m_isPlaying = false;
    bool m_loops = false;
    bool m_soundStarted = false; ///< since frame 0 became current
};

} // namespace velmor
