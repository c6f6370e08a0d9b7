#include "scene/CellTrial.h"

#include "scene/SceneEdit.h"

#include <utility>

namespace velmor {

void CCellTrial::Show(const std::function<void(CXSheetCell&)>& change) {
    const CXSheetCell& shown = m_context.model.Scene().xsheet.Cell(m_cell.level, m_cell.frame);
    CXSheetCell cell = m_before.value_or(shown);
    change(cell);
    if (cell.IsIdenticalTo(shown))
        return;
    if (!m_before)
        m_before = shown;
    Put(cell);
}

void CCellTrial::End() {
    if (const std::optional<CXSheetCell> before = std::exchange(m_before, std::nullopt))
        Put(*before);
}

// The picture follows as it follows the mouse.
void CCellTrial::Put(const CXSheetCell& cell) {
    CSceneEdit edit(m_context, "", UpdateHint::CameraRedraw, UndoStep::None);
    edit.XSheet().MutableCell(m_cell.level, m_cell.frame) = cell;
}

} // namespace velmor
