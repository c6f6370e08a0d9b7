#pragma once

#include "views/xsheet/XSheetGeometry.h"

#include <optional>

namespace velmor {

class CVelmorltDoc;

/// Levels that are dragged by their names to another place: the selected ones when it is one of them, and whole
/// columns are selected, otherwise the one alone.
class CLevelDrag {
public:
    explicit CLevelDrag(CVelmorltDoc& doc) : m_doc(doc) {}

    /// Whether there is a level's name at the point, which is taken then.
    [[nodiscard]] bool Press(const CXSheetGeometry& geometry, QPoint point);
    void Drag(const CXSheetGeometry& geometry, QPoint point);
    /// Moves them there. Where it was pressed, if it was not dragged away from there.
    std::optional<QPoint> Release();
    void Cancel() { m_isDragging = false; }
    bool IsDragging() const { return m_isDragging; }
    /// The level in front of which they would be put; nothing where they would stay.
    std::optional<int> Target() const;

private:
    CVelmorltDoc& m_doc;
    bool m_isDragging = false;
    int m_first = 0;
    int m_last = 0;
    int m_before = 0;
    QPoint m_pressed;
    bool m_moved = false;
};

} // namespace velmor
