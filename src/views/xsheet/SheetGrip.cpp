#include "views/xsheet/SheetGrip.h"

#include "scene/CommandState.h"
#include "scene/VelmorltDoc.h"
#include "scene/XSheetCursor.h"
#include "scene/exposing/SheetTiming.h"

#include <QGuiApplication>
#include <QStyleHints>
#include <algorithm>

namespace velmor {

namespace {

constexpr int fillSize = 9;
constexpr int edgeWidth = 26;
constexpr int edgeHeight = 5;
constexpr int seenFrom = 10; ///< pixels around a handle

// The lower right corner of the cells' last one, one pixel behind it.
QPoint EndOf(const CXSheetSelection& cells, const CXSheetGeometry& geometry) {
    return {geometry.ColumnX(cells.lastLevel + 1), geometry.RowY(cells.lastFrame + 1)};
}

QRect RectOf(const CSheetGrip& grip, const CXSheetGeometry& geometry) {
    const QPoint end = EndOf(grip.cells, geometry);
    if (grip.kind == GripKind::Fill)
        return {end.x() - fillSize + 1, end.y() - fillSize + 2, fillSize, fillSize};
    return {end.x() - (geometry.WidthOf(grip.cells.lastLevel) + edgeWidth) / 2, end.y() - edgeHeight / 2 - 1,
            edgeWidth, edgeHeight};
}

QRect Around(const QRect& rect, int distance) {
    return rect.adjusted(-distance, -distance, distance, distance);
}

int DistanceTo(const QRect& rect, QPoint point) {
    return (rect.center() - point).manhattanLength();
}

// The selection stands for what is copied and filled, the cursor's exposure for what is held.
std::vector<CSheetGrip> Grips(const CSceneModel& model) {
    std::vector<CSheetGrip> grips;
    if (const std::optional<CXSheetSelection> selected = SelectedCells(model))
        grips.push_back({GripKind::Fill, *selected});
    const CXSheet& xsheet = model.Scene().xsheet;
    const CSheetCell at = model.CursorCell();
    if (xsheet.HasLevel(at.level) && xsheet.HasFrame(at.frame) && xsheet.Cell(at.level, at.frame).IsUsed()) {
        const CFrameSpan exposure = ExposureAt(xsheet, at.level, at.frame);
        grips.push_back({GripKind::Edge, {at.level, at.level, exposure.first, exposure.end - 1}});
    }
    return grips;
}

// The frame whose upper edge is nearest.
int NearestEdge(const CXSheetGeometry& geometry, int y) {
    return geometry.firstFrame + (y - geometry.headerHeight + geometry.rowHeight / 2) / geometry.rowHeight;
}

} // namespace

std::optional<CSheetGrip> GripNear(const CSceneModel& model, const CXSheetGeometry& geometry, QPoint point) {
    std::optional<CSheetGrip> nearest;
    for (const CSheetGrip& grip : Grips(model)) {
        const QRect rect = RectOf(grip, geometry);
        if (geometry.IsFolded(grip.cells.lastLevel))
            continue;
        const bool isNearer = !nearest || DistanceTo(rect, point) < DistanceTo(RectOf(*nearest, geometry), point);
        if (isNearer && Around(rect, seenFrom).contains(point) && geometry.GridArea().intersects(rect))
            nearest = grip;
    }
    return nearest;
}

bool IsOn(const CSheetGrip& grip, const CXSheetGeometry& geometry, QPoint point) {
    return Around(RectOf(grip, geometry), 1).contains(point) && geometry.GridArea().contains(point);
}

CGripLook LookOf(const CSheetGrip& grip, const CXSheetGeometry& geometry) {
    return {grip.kind == GripKind::Fill, RectOf(grip, geometry)};
}

Qt::CursorShape ShapeOver(const CSheetGrip& grip, const CXSheetGeometry& geometry, QPoint point) {
    if (!IsOn(grip, geometry, point))
        return Qt::ArrowCursor;
    return grip.kind == GripKind::Fill ? Qt::CrossCursor : Qt::SizeVerCursor;
}

std::optional<CSheetEdit> EditAt(const CSheetGrip& grip, const CXSheetGeometry& geometry, QPoint point,
                                 Following following, bool other) {
    CSheetEdit edit;
    edit.cells = grip.cells;
    const int length = grip.cells.lastFrame - grip.cells.firstFrame + 1;
    if (grip.kind == GripKind::Fill) {
        edit.kind = other ? SheetEditKind::HoldOn : SheetEditKind::Repeat;
        edit.count = geometry.YToFrame(point.y()) - grip.cells.firstFrame + 1;
        return edit.count > length ? std::optional(edit) : std::nullopt;
    }
    const int end = std::clamp(NearestEdge(geometry, point.y()), grip.cells.firstFrame + 1, geometry.frameCount);
    edit.kind = SheetEditKind::SetExposure;
    edit.cells.lastFrame = edit.cells.firstFrame;
    edit.count = end - grip.cells.firstFrame;
    edit.following = (following == Following::Push) != other ? Following::Push : Following::Eat;
    return edit.count != length ? std::optional(edit) : std::nullopt;
}

bool CGripDrag::Press(const CXSheetGeometry& geometry, QPoint point) {
    const std::optional<CSheetGrip> grip = GripNear(m_doc.Model(), geometry, point);
    if (!grip || !IsOn(*grip, geometry, point))
        return false;
    m_grip = grip;
    m_edit.reset();
    m_pressed = point;
    m_moved = false;
    return true;
}

void CGripDrag::Drag(const CXSheetGeometry& geometry, QPoint point, Qt::KeyboardModifiers keys) {
    if (!m_grip)
        return;
    m_moved =
        m_moved || (point - m_pressed).manhattanLength() >= QGuiApplication::styleHints()->startDragDistance() / 2;
    m_edit =
        m_moved ? EditAt(*m_grip, geometry, point, m_doc.Timing().WhatFollows(), keys.testFlag(Qt::ControlModifier))
                : std::nullopt;
    if (m_edit)
        m_doc.Timing().ShowOutcome(*m_edit);
    else
        m_doc.Timing().HideOutcome();
}

std::optional<QPoint> CGripDrag::Release() {
    const std::optional<CSheetGrip> grip = m_grip;
    const std::optional<CSheetEdit> edit = m_edit;
    Cancel();
    if (!edit)
        return m_moved ? std::nullopt : std::optional(m_pressed);
    m_doc.Timing().Do(*edit);
    // The cursor stays on what was slid.
    if (grip->kind == GripKind::Edge) {
        const CSheetCell at = m_doc.Model().CursorCell();
        m_doc.Cursor().GoTo({at.level, std::min(at.frame, edit->cells.firstFrame + edit->count - 1)});
    }
    return std::nullopt;
}

void CGripDrag::Cancel() {
    m_grip.reset();
    m_edit.reset();
    m_doc.Timing().HideOutcome();
}

} // namespace velmor
