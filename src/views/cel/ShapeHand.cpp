#include "views/cel/ShapeHand.h"

#include "image/stroke/Shapes.h"
#include "image/stroke/StrokePoint.h"
#include "scene/CelPainting.h"
#include "scene/ShapePainter.h"
#include "views/cel/CelOverlay.h"
#include "views/cel/PrecisePoint.h"

#include <QPolygonF>

#include <algorithm>

namespace velmor {

namespace {

constexpr double clickReach = 4;          ///< a press that moves less is a click
constexpr std::size_t outlinePoints = 96; ///< of a shape; enough for the eye, and soon drawn

} // namespace

bool CShapeHand::Press(CelTool tool, const CHandPoint& at, const CViewMapping& mapping) {
    if (!m_painting.CanBegin(tool))
        return false;
    if (tool != m_tool)
        m_stage = Stage::Nothing;
    m_tool = tool;
    m_pressed = at.at;
    if (m_stage == Stage::Nothing) {
        m_stage = Stage::Dragging;
        m_from = mapping.ToImage(PrecisePoint(at));
    }
    Follow(at, mapping);
    return true;
}

CPaintResult CShapeHand::Move(std::span<const CHandPoint> way, const CViewMapping& mapping) {
    if (!way.empty())
        Follow(way.back(), mapping);
    return {};
}

CPaintResult CShapeHand::Release(const CHandPoint& at, const CViewMapping& mapping) {
    if (m_stage == Stage::Nothing)
        return {};
    Follow(at, mapping);
    if (m_tool != CelTool::Curve || m_stage == Stage::HasEnds)
        return Draw();
    const bool isClick = Distance(m_pressed, at.at) < clickReach;
    m_stage = m_stage == Stage::Dragging && isClick ? Stage::HasBegin : Stage::HasEnds;
    return {};
}

void CShapeHand::Follow(const CHandPoint& at, const CViewMapping& mapping) {
    const CRealPoint point = mapping.ToImage(PrecisePoint(at));
    m_bend = point;
    if (m_stage == Stage::HasEnds)
        return;
    m_isEven = at.modifiers.testFlag(Qt::ShiftModifier);
    m_fromCentre = at.modifiers.testFlag(Qt::ControlModifier);
    m_to = m_tool == CelTool::Curve && m_isEven ? AlongSteps(m_from, point) : point;
    m_bend = Between(m_from, m_to, 0.5);
}

std::vector<CRealPoint> CShapeHand::Points() const {
    return OutlineOf(m_tool, m_from, m_to, m_bend, m_isEven, m_fromCentre);
}

CPaintResult CShapeHand::Draw() {
    m_stage = Stage::Nothing;
    return PaintOutline(m_painting, m_tool, Points());
}

void CShapeHand::Outline(CCelOverlay& overlay, const CViewMapping& mapping) const {
    if (m_stage == Stage::Nothing)
        return;
    const std::vector<CRealPoint> points = Points();
    const std::size_t step = std::max<std::size_t>(points.size() / outlinePoints, 1);
    QPolygonF outline;
    const auto add = [&](CRealPoint point) {
        const CRealPoint shown = mapping.ToClient(CRealPoint{point.x, point.y + 1}); // where the pen stamps
        outline << QPointF(shown.x, shown.y);
    };
    for (std::size_t i = 0; i + 1 < points.size(); i += step)
        add(points[i]);
    add(points.back());
    overlay.outlines.push_back(outline);
}

} // namespace velmor
