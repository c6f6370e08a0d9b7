#include "views/cel/FillHand.h"

#include "scene/SceneModel.h"
#include "views/cel/CelOverlay.h"

namespace velmor {

namespace {

bool Forces(const CHandPoint& point) {
    return point.modifiers.testFlag(Qt::ShiftModifier);
}

QPointF Shown(CRealPoint point, const CViewMapping& mapping) {
    const CRealPoint client = mapping.ToClient(point);
    return {client.x, client.y};
}

} // namespace

bool CFillHand::Press(CelTool tool, const CHandPoint& at, const CViewMapping& mapping) {
    m_isPlain = tool == CelTool::Bucket && m_model.paint.fill.IsPlain();
    if (m_isPlain)
        return m_plain.Press(tool, at, mapping);
    m_way = {mapping.ToImage(at.at)};
    return m_filling.Begin(tool, mapping.ViewToBuffer(at.Pixel()));
}

CPaintResult CFillHand::Move(std::span<const CHandPoint> way, const CViewMapping& mapping) {
    if (m_isPlain)
        return m_plain.Move(way, mapping);
    CPaintResult all;
    for (const CHandPoint& point : way) {
        m_way.push_back(mapping.ToImage(point.at));
        const CPaintResult result = m_filling.Move(mapping.ViewToBuffer(point.Pixel()), Forces(point));
        all = {result.status, Union(all.changed, result.changed), result.leak ? result.leak : all.leak};
        if (!result.status)
            break;
    }
    return all;
}

CPaintResult CFillHand::Release(const CHandPoint& at, const CViewMapping& mapping) {
    return m_isPlain ? m_plain.Release(at, mapping) : m_filling.End(mapping.ViewToBuffer(at.Pixel()), Forces(at));
}

void CFillHand::Cancel() {
    if (m_isPlain)
        m_plain.Cancel();
    else
        m_filling.Cancel();
}

void CFillHand::Outline(CCelOverlay& overlay, const CViewMapping& mapping) const {
    if (m_isPlain) {
        m_plain.Outline(overlay, mapping);
        return;
    }
    if (!m_filling.IsFilling())
        return;
    const CRealPoint first = m_way.front();
    const CRealPoint last = m_way.back();
    QPolygonF outline;
    switch (m_filling.Form()) {
    case ToolForm::Own: // the loop, with the line that closes it
        for (const CRealPoint& point : m_way)
            outline << Shown(point, mapping);
        outline << Shown(first, mapping);
        break;
    case ToolForm::Rectangle:
        outline << Shown(first, mapping) << Shown({last.x, first.y}, mapping) << Shown(last, mapping)
                << Shown({first.x, last.y}, mapping) << Shown(first, mapping);
        break;
    case ToolForm::Line:
        overlay.gradient = {Shown(first, mapping).toPoint(), Shown(last, mapping).toPoint()};
        break;
    default:
        break;
    }
    if (!outline.isEmpty())
        overlay.outlines.push_back(outline);
}

} // namespace velmor
