#include "scene/CelPainting.h"

#include <utility>

namespace velmor {

bool CCelPainting::Begin(CelTool tool, CPoint at) {
    const CCelImg& image = m_model.celImg;
    if (m_tool || image.GetLoadState() == LoadState::Nothing || !CanUse(tool, image))
        return false;
    m_tool = tool;
    m_form = ToolOf(tool).form(m_model.paint);
    m_from = at;
    return true;
}

CPaintResult CCelPainting::Move(CPoint to) {
    if (!m_tool || m_form != ToolForm::Stroke)
        return {};
    const CPoint from = std::exchange(m_from, to);
    return ToolOf(*m_tool).paint(m_model.celImg, m_model.paint, from, to);
}

CPaintResult CCelPainting::End(CPoint at) {
    if (!m_tool)
        return {};
    const CelTool tool = *std::exchange(m_tool, std::nullopt);
    return ToolOf(tool).paint(m_model.celImg, m_model.paint, m_from, at);
}

CPaintResult CCelPainting::Change(const std::function<CPaintResult(CCelImg& image)>& change) {
    return m_model.celImg.GetLoadState() == LoadState::Nothing ? CPaintResult() : change(m_model.celImg);
}

} // namespace velmor
