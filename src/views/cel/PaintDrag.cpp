#include "views/cel/PaintDrag.h"

#include "views/cel/CelOverlay.h"

#include <QPoint>
#include <QPolygonF>

#include <algorithm>

namespace velmor {

namespace {

QPointF Shown(CRealPoint point, const CViewMapping& mapping) {
    const CRealPoint client = mapping.ToClient(point);
    return {client.x, client.y};
}

} // namespace

bool CPaintDrag::Press(CelTool tool, const CHandPoint& at, const CViewMapping& mapping) {
    m_press = m_last = mapping.ToImage(at.at);
    return m_painting.Begin(tool, mapping.ViewToBuffer(at.Pixel()));
}

CPaintResult CPaintDrag::Move(std::span<const CHandPoint> way, const CViewMapping& mapping) {
    CPaintResult all;
    for (const CHandPoint& point : way) {
        m_last = mapping.ToImage(point.at);
        const CPaintResult result = m_painting.Move(mapping.ViewToBuffer(point.Pixel()));
        all = {result.status, Union(all.changed, result.changed)};
        if (!result.status)
            break;
    }
    return all;
}

CPaintResult CPaintDrag::Release(const CHandPoint& at, const CViewMapping& mapping) {
    return m_painting.End(mapping.ViewToBuffer(at.Pixel()));
}

void CPaintDrag::Outline(CCelOverlay& overlay, const CViewMapping& mapping) const {
    const ToolForm form = m_painting.Form();
    const QPointF press = Shown(m_press, mapping);
    const QPointF last = Shown(m_last, mapping);
    if (form == ToolForm::Line)
        overlay.gradient = {press.toPoint(), last.toPoint()};
    if (form != ToolForm::Rectangle && form != ToolForm::Line)
        return;
    if (mapping.turn.IsUpright()) {
        const QPoint a = press.toPoint();
        const QPoint b = last.toPoint();
        overlay.band = QRect(QPoint(std::min(a.x(), b.x()), std::min(a.y(), b.y())),
                             QPoint(std::max(a.x(), b.x()), std::max(a.y(), b.y())));
    } else if (form == ToolForm::Rectangle) {
        overlay.outlines.push_back(QPolygonF(
            {press, Shown({m_last.x, m_press.y}, mapping), last, Shown({m_press.x, m_last.y}, mapping), press}));
    }
}

} // namespace velmor
