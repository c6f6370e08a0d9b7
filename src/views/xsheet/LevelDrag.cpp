#include "views/xsheet/LevelDrag.h"

#include "scene/SceneModel.h"
#include "scene/VelmorltDoc.h"
#include "scene/XSheetOperations.h"

#include <QGuiApplication>
#include <QStyleHints>

namespace velmor {

bool CLevelDrag::Press(const CXSheetGeometry& geometry, QPoint point) {
    const bool onNames = point.y() >= geometry.buttonSize && point.y() < geometry.headerHeight;
    const std::optional<int> level = onNames ? geometry.LevelAt(point) : std::nullopt;
    if (!level)
        return false;
    const CXSheetSelection& selection = m_doc.Model().selection;
    const bool isSelected = selection.firstFrame == 0 && selection.lastFrame == geometry.frameCount - 1 &&
                            *level >= selection.firstLevel && *level <= selection.lastLevel;
    m_first = isSelected ? selection.firstLevel : *level;
    m_last = isSelected ? selection.lastLevel : *level;
    m_before = m_first;
    m_pressed = point;
    m_moved = false;
    m_isDragging = true;
    return true;
}

// The gap whose middle is nearest.
void CLevelDrag::Drag(const CXSheetGeometry& geometry, QPoint point) {
    m_moved =
        m_moved || (point - m_pressed).manhattanLength() >= QGuiApplication::styleHints()->startDragDistance();
    const int level = geometry.XToLevel(point.x());
    const bool isInRightHalf = point.x() >= geometry.ColumnX(level) + geometry.WidthOf(level) / 2;
    m_before = isInRightHalf ? level + 1 : level;
}

std::optional<int> CLevelDrag::Target() const {
    const bool staysThere = !m_moved || (m_before >= m_first && m_before <= m_last + 1);
    return m_isDragging && !staysThere ? std::optional(m_before) : std::nullopt;
}

std::optional<QPoint> CLevelDrag::Release() {
    const std::optional<int> target = Target();
    m_isDragging = false;
    if (target)
        m_doc.XSheet().MoveLevels(m_first, m_last, *target);
    return m_moved ? std::nullopt : std::optional(m_pressed);
}

} // namespace velmor
