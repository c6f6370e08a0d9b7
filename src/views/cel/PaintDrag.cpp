#include "views/cel/PaintDrag.h"

#include "views/cel/CelOverlay.h"

#include <algorithm>

namespace velmor {

bool CPaintDrag::Begin(CelTool tool, CPoint at, const CViewMapping& mapping) {
    m_press = m_last = at;
    return m_painting.Begin(tool, mapping.ViewToBuffer(at));
}

CPaintResult CPaintDrag::Move(CPoint to, const CViewMapping& mapping) {
    m_last = to;
    return m_painting.Move(mapping.ViewToBuffer(to));
}

CPaintResult CPaintDrag::End(CPoint at, const CViewMapping& mapping) {
    return m_painting.End(mapping.ViewToBuffer(at));
}

void CPaintDrag::Scroll(int dx, int dy) {
    for (CPoint* point : {&m_press, &m_last})
        *point = {point->x + dx, point->y + dy};
}

void CPaintDrag::Outline(CCelOverlay& overlay) const {
    const ToolForm form = m_painting.Form();
    if (form != ToolForm::Rectangle && form != ToolForm::Line)
        return;
    overlay.band = QRect(QPoint(std::min(m_press.x, m_last.x), std::min(m_press.y, m_last.y)),
                         QPoint(std::max(m_press.x, m_last.x), std::max(m_press.y, m_last.y)));
    if (form == ToolForm::Line)
        overlay.gradient = {QPoint(m_press.x, m_press.y), QPoint(m_last.x, m_last.y)};
}

} // namespace velmor
