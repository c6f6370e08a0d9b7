#include "views/xsheet/XSheetMouse.h"

#include "scene/CellOperations.h"
#include "scene/SceneModel.h"
#include "scene/VelmorltDoc.h"
#include "scene/XSheetCursor.h"
#include "scene/XSheetOperations.h"

#include <Qt>
#include <algorithm>

namespace velmor {

namespace {

void Select(CVelmorltDoc& doc, const CXSheetSelection& selection) {
    doc.Cursor().SetSelStartX(selection.firstLevel);
    doc.Cursor().SetSelEndX(selection.lastLevel);
    doc.Cursor().SetSelStartY(selection.firstFrame);
    doc.Cursor().SetSelEndY(selection.lastFrame);
}

CXSheetSelection Spanning(CSheetCell a, CSheetCell b) {
    const auto [firstLevel, lastLevel] = std::minmax(a.level, b.level);
    const auto [firstFrame, lastFrame] = std::minmax(a.frame, b.frame);
    return {firstLevel, lastLevel, firstFrame, lastFrame};
}

CXSheetSelection Grown(const CXSheetSelection& selection, CSheetCell cell) {
    return {std::min(selection.firstLevel, cell.level), std::max(selection.lastLevel, cell.level),
            std::min(selection.firstFrame, cell.frame), std::max(selection.lastFrame, cell.frame)};
}

} // namespace

void CXSheetMouse::Press(const CXSheetGeometry& geometry, QPoint point, bool extend) {
    if (point.y() < geometry.buttonSize) {
        m_press = Pressed::Button;
        return;
    }
    const CSheetCell cell = geometry.NearestCell(point);
    CXSheetSelection selection = m_doc.Model().selection;
    if (point.y() > geometry.buttonSize && point.y() < geometry.headerHeight) {
        m_press = Pressed::Columns;
        if (geometry.LevelAt(point)) {
            m_doc.Cursor().SetCursorX(cell.level);
            selection = extend ? Grown(selection, cell) : Spanning(cell, cell);
        }
        selection.firstFrame = 0;
        selection.lastFrame = geometry.frameCount - 1;
        Select(m_doc, selection);
    } else {
        m_press = Pressed::Cells;
        Select(m_doc, extend ? Grown(selection, cell) : Spanning(cell, cell));
        m_doc.Cursor().SetCursorX(cell.level);
    }
    m_doc.Cursor().SetCursorY(cell.frame);
}

void CXSheetMouse::Drag(const CXSheetGeometry& geometry, QPoint point) {
    if (!IsSelecting())
        return;
    CXSheetSelection selection =
        Spanning(geometry.NearestCell(point), {m_doc.Model().cursorLevel, m_doc.Model().cursorFrame});
    if (IsSelectingColumns()) {
        selection.firstFrame = 0;
        selection.lastFrame = geometry.frameCount - 1;
    }
    Select(m_doc, selection);
}

void CXSheetMouse::Release(const CXSheetGeometry& geometry, QPoint point) {
    const bool button = IsButtonPressed();
    // Over before a dialog opens, which takes the events that follow.
    m_press = Pressed::Nothing;
    if (!button)
        return;
    if (const std::optional<CHeaderHit> hit = geometry.HeaderButtonAt(point.x()))
        ClickButton(*hit);
}

void CXSheetMouse::ClickButton(const CHeaderHit& hit) {
    switch (hit.button) {
    case HeaderButton::Blur:
        m_doc.Cells().OnXSheetDoBlur(hit.level);
        break;
    case HeaderButton::Transparency:
        m_doc.Cells().OnXSheetDoTrans(hit.level);
        break;
    case HeaderButton::Move:
        m_doc.Cursor().SetLevelCanMove(hit.level);
        break;
    case HeaderButton::Camera:
        m_doc.Cursor().SelectCamera();
        break;
    }
}

void SelectForMenu(CVelmorltDoc& doc, const CXSheetGeometry& geometry, QPoint point) {
    const CXSheetSelection& selection = doc.Model().selection;
    const CXSheetSelection before = selection;
    const bool onHeader = point.y() < geometry.headerHeight;
    const CSheetCell cell = geometry.CellAt(point) || onHeader
                                ? geometry.NearestCell(point)
                                : CSheetCell{doc.Model().cursorLevel, geometry.YToFrame(point.y())};
    const CXSheetSelection wanted{cell.level, cell.level, onHeader ? 0 : cell.frame,
                                  onHeader ? geometry.frameCount - 1 : cell.frame};
    if (Grown(Grown(selection, {wanted.firstLevel, wanted.firstFrame}), {wanted.lastLevel, wanted.lastFrame}) ==
        before)
        return;
    MoveCursor(doc, cell, false);
    Select(doc, wanted);
}

void MoveCursor(CVelmorltDoc& doc, CSheetCell cell, bool extend) {
    const CSceneModel& model = doc.Model();
    const CXSheetSelection& selection = model.selection;
    const CSheetCell opposite{
        model.cursorLevel == selection.firstLevel ? selection.lastLevel : selection.firstLevel,
        model.cursorFrame == selection.firstFrame ? selection.lastFrame : selection.firstFrame};
    Select(doc, Spanning(cell, extend ? opposite : cell));
    if (cell.level != model.cursorLevel)
        doc.Cursor().SetCursorX(cell.level);
    doc.Cursor().SetCursorY(cell.frame);
}

namespace {

// The nearest level in a direction that is not folded, or the one itself.
int Beside(const CXSheetGeometry& geometry, int level, int by) {
    for (int next = level + by; next >= 0 && next < geometry.levelCount; next += by)
        if (!geometry.IsFolded(next))
            return next;
    return level;
}

} // namespace

std::optional<CSheetCell> CursorAfterKey(int key, CSheetCell cursor, const CXSheetGeometry& geometry) {
    const int page = std::max(1, geometry.VisibleFrames() - 1);
    switch (key) {
    case Qt::Key_Left:
        cursor.level = Beside(geometry, cursor.level, -1);
        break;
    case Qt::Key_Right:
        cursor.level = Beside(geometry, cursor.level, 1);
        break;
    case Qt::Key_Up:
        --cursor.frame;
        break;
    case Qt::Key_Down:
        ++cursor.frame;
        break;
    case Qt::Key_PageUp:
        cursor.frame -= page;
        break;
    case Qt::Key_PageDown:
        cursor.frame += page;
        break;
    case Qt::Key_Home:
        cursor.frame = 0;
        break;
    case Qt::Key_End:
        cursor.frame = geometry.frameCount - 1;
        break;
    default:
        return std::nullopt;
    }
    return CSheetCell{std::max(0, std::min(cursor.level, geometry.levelCount - 1)),
                      std::max(0, std::min(cursor.frame, geometry.frameCount - 1))};
}

} // namespace velmor
