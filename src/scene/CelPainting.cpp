#include "scene/CelPainting.h"

#include "scene/history/PaintingStep.h"

#include <algorithm>
#include <new>
#include <utility>

namespace velmor {

namespace {

CPaintResult NoMemory() {
    return {CStatus::Failure("Unable to allocate memory for cel!"), CRect{}};
}

} // namespace

bool CCelPainting::CanBegin(CelTool tool) const {
    const CCelImg& image = m_model.celImg;
    return !m_tool && image.GetLoadState() != LoadState::Nothing && CanUse(tool, image);
}

bool CCelPainting::Begin(CelTool tool, CPoint at) {
    if (!CanBegin(tool))
        return false;
    Finish();
    m_tool = tool;
    m_step = ToolOf(tool).step;
    m_form = FormOf(tool);
    m_from = at;
    m_paintedOver.Clear();
    m_tip.reset();
    if (const std::optional<CToolTip> tip = Tip())
        m_tip.emplace(tip->action, tip->color);
    return true;
}

CPaintResult CCelPainting::Move(CPoint to) {
    if (!m_tool || m_form != ToolForm::Stroke)
        return {};
    const CPoint from = std::exchange(m_from, to);
    return Paint(*m_tool, from, to);
}

CPaintResult CCelPainting::Sweep(const CTipPlace& to) {
    if (!m_tool || !m_tip)
        return {};
    return Keep(m_tip->Reach(to)) ? m_tip->MoveTo(m_model.celImg, to) : NoMemory();
}

std::optional<CToolTip> CCelPainting::Tip() const {
    return m_tool ? TipOf(*m_tool, m_model.paint) : std::nullopt;
}

CPaintResult CCelPainting::End(CPoint at) {
    if (!m_tool)
        return {};
    const CelTool tool = *std::exchange(m_tool, std::nullopt);
    CPaintResult result = Paint(tool, m_from, at);
    LeaveStep();
    return result;
}

void CCelPainting::Cancel() {
    if (m_tool.has_value())
        LeaveStep();
    m_tool.reset();
}

void CCelPainting::LeaveStep() {
    LeavePaintingStep(m_model, m_step, m_paintedOver);
}

bool CCelPainting::Keep(const CRect& touched) {
    try {
        m_paintedOver.Keep(m_model.celImg, touched);
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}

CPaintResult CCelPainting::Paint(CelTool tool, CPoint from, CPoint to) {
    CCelImg& image = m_model.celImg;
    const std::optional<int> reach = ToolOf(tool).reach(m_model.paint);
    CRect touched{0, 0, image.Width(), image.Height()};
    if (reach)
        touched = {std::min(from.x, to.x) - *reach, std::min(from.y, to.y) - *reach,
                   std::max(from.x, to.x) + *reach + 1, std::max(from.y, to.y) + *reach + 1};
    if (!Keep(touched))
        return NoMemory();
    CPaintResult result = ToolOf(tool).paint(image, m_model.paint, from, to);
    if (!reach)
        m_paintedOver.KeepOnly(result.changed);
    return result;
}

CPaintResult CCelPainting::Change(const std::string& name,
                                  const std::function<CPaintResult(CCelImg& image)>& change) {
    CCelImg& image = m_model.celImg;
    if (image.GetLoadState() == LoadState::Nothing)
        return {};
    Finish();
    CKeptTiles before;
    if (m_model.history.IsOn())
        before.Keep(image, {0, 0, image.Width(), image.Height()});
    CPaintResult result = change(image);
    LeavePaintingStep(m_model, name, before);
    return result;
}

CPaintResult CCelPainting::GoOn(const std::string& name, const CRect& touched,
                                const std::function<CPaintResult(CCelImg& image)>& change) {
    CCelImg& image = m_model.celImg;
    if (image.GetLoadState() == LoadState::Nothing)
        return {};
    try {
        if (!m_model.unfinished)
            m_model.unfinished = CUnfinishedPainting();
        m_model.unfinished->name = name;
        m_model.unfinished->before.Keep(image, touched);
    } catch (const std::bad_alloc&) {
        return {CStatus::Failure("Unable to allocate memory for cel!"), CRect{}};
    }
    return change(image);
}

} // namespace velmor
