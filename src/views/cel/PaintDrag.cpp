#include "views/cel/PaintDrag.h"

#include "image/stroke/Shapes.h"
#include "views/cel/CelOverlay.h"
#include "views/cel/PrecisePoint.h"

#include <QPoint>
#include <QPolygonF>

#include <algorithm>
#include <vector>

namespace velmor {

namespace {

QPointF Shown(CRealPoint point, const CViewMapping& mapping) {
    const CRealPoint client = mapping.ToClient(point);
    return {client.x, client.y};
}

} // namespace

CPaintDrag::Way CPaintDrag::WayOf(CelTool tool, const CHandPoint& at) const {
    if (m_painting.FormOf(tool) != ToolForm::Stroke)
        return Way::Stamps;
    if (at.modifiers & (Qt::ShiftModifier | Qt::ControlModifier))
        return Way::Straight;
    return CStrokePainter::IsWanted(m_settings, tool, at.hasPressure) ? Way::Stroke : Way::Stamps;
}

bool CPaintDrag::Press(CelTool tool, const CHandPoint& at, const CViewMapping& mapping) {
    m_press = m_last = mapping.ToImage(at.at);
    m_hardest = at.pressure;
    m_way = WayOf(tool, at);
    if (m_way == Way::Stamps)
        return m_painting.Begin(tool, mapping.ViewToBuffer(at.Pixel()));
    m_press = m_last = mapping.ToImage(PrecisePoint(at));
    if (m_way == Way::Straight && at.modifiers.testFlag(Qt::ShiftModifier))
        m_press = m_lastEnd.value_or(m_press);
    return m_stroke.Press(tool, m_settings, at.hasPressure, {m_press, at.pressure}, 1 / mapping.zoom.Factor());
}

CPaintResult CPaintDrag::Move(std::span<const CHandPoint> way, const CViewMapping& mapping) {
    if (m_way == Way::Straight) {
        for (const CHandPoint& point : way)
            FollowStraight(point, mapping);
        return {};
    }
    return m_way == Way::Stroke ? MoveStroke(way, mapping) : MoveStamps(way, mapping);
}

CPaintResult CPaintDrag::MoveStamps(std::span<const CHandPoint> way, const CViewMapping& mapping) {
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

CPaintResult CPaintDrag::MoveStroke(std::span<const CHandPoint> way, const CViewMapping& mapping) {
    std::vector<CStrokePoint> points;
    points.reserve(way.size());
    for (const CHandPoint& point : way)
        points.push_back({mapping.ToImage(PrecisePoint(point)), point.pressure});
    m_last = points.empty() ? m_last : points.back().at;
    return m_stroke.Move(points);
}

void CPaintDrag::FollowStraight(const CHandPoint& at, const CViewMapping& mapping) {
    m_hardest = std::max(m_hardest, at.pressure);
    m_last = mapping.ToImage(PrecisePoint(at));
    if (at.modifiers.testFlag(Qt::ControlModifier))
        m_last = AlongSteps(m_press, m_last);
}

CPaintResult CPaintDrag::Release(const CHandPoint& at, const CViewMapping& mapping) {
    const bool isStroke = m_painting.Form() == ToolForm::Stroke;
    CPaintResult result;
    if (m_way == Way::Straight) {
        CHandPoint end = at;
        end.pressure = 0; // of the lifted pen
        FollowStraight(end, mapping);
        result = m_stroke.ReleaseStraight(m_last, m_hardest);
    } else {
        m_last = mapping.ToImage(PrecisePoint(at));
        result = m_way == Way::Stroke ? m_stroke.Release(m_last) : m_painting.End(mapping.ViewToBuffer(at.Pixel()));
    }
    if (isStroke)
        m_lastEnd = m_last;
    return result;
}

void CPaintDrag::Outline(CCelOverlay& overlay, const CViewMapping& mapping) const {
    if (m_way == Way::Straight)
        overlay.outlines.push_back(QPolygonF({Shown(m_press, mapping), Shown(m_last, mapping)}));
    else
        OutlineBand(overlay, mapping);
}

void CPaintDrag::OutlineBand(CCelOverlay& overlay, const CViewMapping& mapping) const {
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
