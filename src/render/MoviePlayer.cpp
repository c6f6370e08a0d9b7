#include "render/MoviePlayer.h"

namespace velmor {

void CMoviePlayer::Play(Milliseconds now) {
    m_timing.Start(now);
    m_isPlaying = true;
    m_soundStarted = false;
}

CMoviePlayer::CPass CMoviePlayer::Pass(Milliseconds now) {
    CPass pass;
    if (!m_isPlaying)
        return pass;
    // Only where the movie begins: a sound that starts in the middle would have to be cut to fit.
    pass.startSound = m_hasSound && m_frame == 0 && !m_soundStarted;
    m_soundStarted |= pass.startSound;
    if (m_timing.Step(now)) {
        pass.draw = m_frame;
        pass.warn = m_timing.IsTimeToWarn();
        if (++m_frame == m_frameCount) {
            m_frame = 0;
            m_soundStarted = false;
            pass.hasEnded = !m_loops;
            m_isPlaying = m_loops;
        }
    }
    return pass;
}

} // namespace velmor
