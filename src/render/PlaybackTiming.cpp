#include "render/PlaybackTiming.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace velmor {

namespace {

constexpr double millisecondsPerSecond = 1000;

} // namespace

CPlaybackTiming::CPlaybackTiming(double rate)
    : m_target(rate), m_period(static_cast<Milliseconds>(millisecondsPerSecond / rate)), m_measured(rate) {
    Start(0);
}

void CPlaybackTiming::Start(Milliseconds now) {
    m_anchor = now;
    m_framesSinceAnchor = 0;
    m_lastDraw = -m_period;
    m_history.fill(m_target);
    m_measured = m_target;
    m_slowFrames = 0;
    m_isTimeToWarn = false;
}

bool CPlaybackTiming::Step(Milliseconds now) {
    if (m_framesSinceAnchor > framesPerAnchor)
        MoveAnchor(now);
    const Milliseconds elapsed = now - m_anchor;
    const bool draws = elapsed > m_framesSinceAnchor * m_period;
    m_isTimeToWarn = false;
    if (draws)
        Measure(elapsed);
    if (IsOnRate())
        m_slowFrames = 0;
    else if (draws && m_measured < m_target - 1)
        m_isTimeToWarn = ++m_slowFrames == patience; // frames that catch up are too fast and leave the count alone
    return draws;
}

void CPlaybackTiming::MoveAnchor(Milliseconds now) {
    // To when the next frame is due, so that no frame comes early; a delay of more than a frame is given up.
    const Milliseconds due = m_anchor + m_framesSinceAnchor * m_period;
    const Milliseconds anchor = now - due < m_period ? due : now;
    m_lastDraw -= anchor - m_anchor;
    m_anchor = anchor;
    m_framesSinceAnchor = 0;
}

void CPlaybackTiming::Measure(Milliseconds elapsed) {
    const Milliseconds interval = std::max<Milliseconds>(elapsed - m_lastDraw, 1);
    m_lastDraw = elapsed;
    ++m_framesSinceAnchor;
    std::rotate(m_history.begin(), m_history.begin() + 1, m_history.end());
    m_history.back() = millisecondsPerSecond / static_cast<double>(interval);
    m_measured = std::accumulate(m_history.begin(), m_history.end(), 0.0) * 0.2;
}

bool CPlaybackTiming::IsOnRate() const {
    return m_measured >= m_target - 1 && m_measured <= m_target + 1;
}

CSoundClock::CSoundClock(double rate, Milliseconds period)
    : m_stretch(static_cast<double>(period) * rate / millisecondsPerSecond) {}

double CSoundClock::Advanced(Milliseconds wall) const {
    return m_base + static_cast<double>(wall - m_wallBase) * m_stretch;
}

Milliseconds CSoundClock::Now(Milliseconds wall) const {
    m_latest = std::max(m_latest, Advanced(wall));
    return static_cast<Milliseconds>(std::floor(m_latest));
}

void CSoundClock::StartSound(Milliseconds wall) {
    m_soundStart = std::max(m_latest, Advanced(wall));
    m_follows = true;
}

void CSoundClock::Follow(Milliseconds wall, double soundSeconds) {
    if (!m_follows)
        return;
    const double heard = m_soundStart + soundSeconds * millisecondsPerSecond * m_stretch;
    const double shown = Advanced(wall);
    m_base = std::clamp(shown, heard - static_cast<double>(tolerance), heard + static_cast<double>(tolerance));
    m_wallBase = wall;
}

} // namespace velmor
