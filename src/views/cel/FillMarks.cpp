#include "views/cel/FillMarks.h"

#include "image/paint/GapFill.h"
#include "views/cel/CelOverlay.h"

#include <chrono>
#include <new>
#include <utility>

namespace velmor {

namespace {

constexpr int lookEvery = 80; // milliseconds

std::vector<CPassage> Search(const CMaskPlane& lines, int gap) {
    try {
        return FindGaps(lines, gap);
    } catch (const std::bad_alloc&) {
        return {};
    }
}

QPointF Centre(CPoint pixel, const CViewMapping& mapping) {
    const CRealPoint client = mapping.ToClient(CRealPoint{pixel.x + 0.5, pixel.y + 0.5});
    return {client.x, client.y};
}

} // namespace

CFillMarks::CFillMarks(std::function<std::optional<CState>()> state, std::function<CMaskPlane()> lines,
                       std::function<void()> changed)
    : m_state(std::move(state)), m_lines(std::move(lines)), m_changed(std::move(changed)) {
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { Look(); });
}

void CFillMarks::ShowGaps(bool shown) {
    m_showsGaps = shown;
    if (shown)
        m_timer.start(lookEvery);
    else
        m_timer.stop();
    ForgetGaps();
}

void CFillMarks::ForgetGaps() {
    m_known.reset();
    m_gaps.clear();
    m_sought.reset(); // what is being looked for is not taken
    m_changed();
}

void CFillMarks::Look() {
    if (m_search.valid() && m_search.wait_for(std::chrono::seconds(0)) == std::future_status::ready)
        Take();
    const std::optional<CState> now = m_state();
    if (!now || now == m_known || m_search.valid())
        return;
    if (now->gap == 0) {
        m_known = now;
        m_gaps.clear();
        m_changed();
        return;
    }
    try {
        m_search = std::async(std::launch::async, Search, m_lines(), now->gap);
        m_sought = now;
    } catch (const std::exception&) { // no memory, no thread: the next look may be luckier
    }
}

void CFillMarks::Take() {
    std::vector<CPassage> found = m_search.get();
    if (!m_sought)
        return;
    m_known = std::exchange(m_sought, std::nullopt);
    m_gaps = std::move(found);
    m_changed();
}

void CFillMarks::SetLeak(std::optional<CPoint> leak) {
    if (std::exchange(m_leak, leak) != leak)
        m_changed();
}

void CFillMarks::AddTo(CCelOverlay& overlay, const CViewMapping& mapping) const {
    if (m_leak)
        overlay.leak = Centre(*m_leak, mapping);
    if (m_showsGaps)
        for (const CPassage& gap : m_gaps)
            overlay.gaps.emplace_back(Centre(gap.from, mapping), Centre(gap.to, mapping));
}

} // namespace velmor
