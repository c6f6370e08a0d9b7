#include "render/preview/PreviewPlayer.h"

#include <algorithm>
#include <cmath>

namespace velmor {

CPreviewPlayer::CPass CPreviewPlayer::Pass(double played, const std::function<bool(int frame)>& isReady) {
    const auto step = static_cast<std::int64_t>(std::floor(played));
    if (!m_loops && step >= Steps()) {
        GoTo(Steps());
        m_step = Steps() - 1;
        return {std::nullopt, true};
    }
    GoTo(step);
    if (m_isShown || !isReady(Frame()))
        return {};
    m_isShown = true;
    return {Frame(), false};
}

void CPreviewPlayer::GoTo(std::int64_t step) {
    if (step <= m_step)
        return;
    m_dropped += step - m_step - (m_isShown ? 1 : 0);
    m_step = step;
    m_isShown = false;
}

std::vector<int> CPreviewPlayer::ToCome(int lead, int most) const {
    const std::int64_t begin = m_step + lead;
    const std::int64_t end = begin + std::min(m_range.Count(), most);
    std::vector<int> frames;
    for (std::int64_t step = begin; step < (m_loops ? end : std::min(end, Steps())); ++step)
        frames.push_back(FrameAt(step));
    return frames;
}

} // namespace velmor
