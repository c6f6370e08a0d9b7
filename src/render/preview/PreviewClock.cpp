#include "render/preview/PreviewClock.h"

#include <algorithm>

namespace velmor {

CPreviewClock::CPreviewClock(double rate, Milliseconds now, bool hasSound)
    : m_rate(rate),
      m_period(std::max<Milliseconds>(static_cast<Milliseconds>(1000 / rate), 1)),
      m_start(now),
      m_clock(rate, m_period) {
    if (hasSound)
        m_clock.StartSound(0);
}

void CPreviewClock::Follow(Milliseconds now, double heardFrames) {
    m_clock.Follow(now - m_start, heardFrames / m_rate);
}

double CPreviewClock::Played(Milliseconds now) const {
    return static_cast<double>(m_clock.Now(now - m_start)) / static_cast<double>(m_period);
}

} // namespace velmor
