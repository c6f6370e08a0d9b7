#include "views/cel/SelectionMarks.h"

#include "image/select/MaskOutline.h"
#include "scene/CelSelection.h"

#include <QPainter>
#include <QPen>

#include <array>
#include <cmath>

namespace velmor {

namespace {

constexpr double handleSide = 7;
constexpr double handleReach = 7;
constexpr double cornerReach = 26;        ///< outside a corner, where it turns
constexpr double leastSide = 44;          ///< of the frame, to have a handle in the middle
constexpr std::size_t mostDashed = 30000; ///< corners; dashes of more would be felt

double Distance(const QPointF& a, const QPointF& b) {
    return std::hypot(a.x() - b.x(), a.y() - b.y());
}

QPen Hairline(const QColor& color, Qt::PenStyle style) {
    QPen pen(color, 1, style);
    pen.setCosmetic(true);
    return pen;
}

} // namespace

QTransform CSelectionMarks::TransformOf(const CViewMapping& mapping) const {
    const CPieceMap map(m_selection.Frame(), m_selection.Placement());
    const CRealPoint origin = mapping.ToClient(map.ToImage({0, 0}));
    const CRealPoint right = mapping.ToClient(map.ToImage({1, 0}));
    const CRealPoint up = mapping.ToClient(map.ToImage({0, 1}));
    return {right.x - origin.x, right.y - origin.y, up.x - origin.x, up.y - origin.y, origin.x, origin.y};
}

QPolygonF CSelectionMarks::FrameOn(const CViewMapping& mapping) const {
    const CRect frame = m_selection.Frame();
    return TransformOf(mapping).map(
        QPolygonF(QRectF(frame.x, frame.y, frame.endX - frame.x, frame.endY - frame.y)));
}

CSelectionMarks::CState CSelectionMarks::StateOf(const CViewMapping& mapping, bool hasHandles) const {
    if (!m_selection.HasSelection())
        return {};
    const QTransform transform = TransformOf(mapping);
    const CRect& bounds = m_selection.OriginalBounds();
    const QRectF outline =
        transform.mapRect(QRectF(bounds.x, bounds.y, bounds.endX - bounds.x, bounds.endY - bounds.y));
    const int beside = static_cast<int>(handleSide);
    return {
        m_selection.Changes(), transform,
        outline.united(FrameOn(mapping).boundingRect()).toAlignedRect().adjusted(-beside, -beside, beside, beside),
        hasHandles};
}

std::vector<CSelectionMarks::CHandle> CSelectionMarks::HandlesOn(const CViewMapping& mapping) const {
    const CRect frame = m_selection.Frame();
    const QTransform transform = TransformOf(mapping);
    const auto at = [&](int x, int y) {
        return transform.map(QPointF((frame.x + frame.endX) / 2.0 + x * (frame.endX - frame.x) / 2.0,
                                     (frame.y + frame.endY) / 2.0 + y * (frame.endY - frame.y) / 2.0));
    };
    const bool isWide = Distance(at(-1, 0), at(1, 0)) >= leastSide;
    const bool isHigh = Distance(at(0, -1), at(0, 1)) >= leastSide;
    std::vector<CHandle> handles;
    for (int y = -1; y <= 1; ++y)
        for (int x = -1; x <= 1; ++x)
            if ((x != 0 && y != 0) || (x == 0 && y != 0 && isWide) || (y == 0 && x != 0 && isHigh))
                handles.push_back({{SelectGrip::Handle, x, y}, at(x, y)});
    return handles;
}

CSelectGrip CSelectionMarks::GripAt(CRealPoint client, const CViewMapping& mapping) const {
    if (!m_selection.HasSelection())
        return {};
    const QPointF at(client.x, client.y);
    const QPointF original = TransformOf(mapping).inverted().map(at);
    const CRect frame = m_selection.Frame();
    const bool isInFrame = original.x() >= frame.x && original.x() < frame.endX && original.y() >= frame.y &&
                           original.y() < frame.endY;
    for (const CHandle& handle : HandlesOn(mapping))
        if (Distance(handle.at, at) <= handleReach)
            return handle.grip;
    if (isInFrame)
        return m_selection.IsFloating() || m_selection.HasOriginal(static_cast<int>(std::floor(original.x())),
                                                                   static_cast<int>(std::floor(original.y())))
                   ? CSelectGrip{SelectGrip::Inside}
                   : CSelectGrip{};
    for (const CHandle& handle : HandlesOn(mapping))
        if (handle.grip.x != 0 && handle.grip.y != 0 && Distance(handle.at, at) <= cornerReach)
            return {SelectGrip::Corner, handle.grip.x, handle.grip.y};
    return {};
}

void CSelectionMarks::GoRound() {
    if (m_changes == m_selection.Changes())
        return;
    m_changes = m_selection.Changes();
    m_outline.clear();
    std::size_t corners = 0;
    for (const std::vector<CPoint>&line :
         OutlineOf(m_selection.OriginalBounds(), [this](int x, int y) { return m_selection.HasOriginal(x, y); })) {
        QPolygonF& polygon = m_outline.emplace_back();
        for (const CPoint corner : line)
            polygon.append(QPointF(corner.x, corner.y));
        polygon.append(polygon.front());
        corners += line.size();
    }
    m_isDense = corners > mostDashed;
}

void CSelectionMarks::Paint(QPainter& painter, const CViewMapping& mapping, bool hasHandles) {
    if (!m_selection.HasSelection())
        return;
    GoRound();
    painter.save();
    painter.setTransform(TransformOf(mapping), true);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(Hairline(Qt::white, Qt::SolidLine));
    for (const QPolygonF& line : m_outline)
        painter.drawPolyline(line);
    painter.setPen(Hairline(Qt::black, m_isDense ? Qt::SolidLine : Qt::DashLine));
    if (m_isDense)
        painter.setOpacity(0.5); // grey is seen on both
    for (const QPolygonF& line : m_outline)
        painter.drawPolyline(line);
    painter.restore();
    if (!hasHandles)
        return;
    painter.save();
    painter.setPen(QPen(QColor(0, 120, 215), 1));
    if (m_selection.IsFloating())
        painter.drawPolygon(FrameOn(mapping));
    painter.setPen(QPen(Qt::black, 1));
    painter.setBrush(Qt::white);
    for (const CHandle& handle : HandlesOn(mapping))
        painter.drawRect(QRectF(std::round(handle.at.x() - handleSide / 2),
                                std::round(handle.at.y() - handleSide / 2), handleSide - 1, handleSide - 1));
    painter.restore();
}

} // namespace velmor
