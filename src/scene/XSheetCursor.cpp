#include "scene/XSheetCursor.h"

#include <utility>

namespace velmor {

bool CXSheetCursor::RequireLevel(int level, const char* message) const {
    return m_context.Require(m_context.model.Scene().xsheet.HasLevel(level), message);
}

bool CXSheetCursor::RequireFrame(int frame, const char* message) const {
    return m_context.Require(m_context.model.Scene().xsheet.HasFrame(frame), message);
}

std::string CXSheetCursor::GetLevelName(int level) const {
    if (!RequireLevel(level, "Internal Error : lvlno out of range in GetLevelName"))
        return {};
    return m_context.model.Scene().xsheet.LevelName(level);
}

bool CXSheetCursor::GetLevelSmoothed(int level) const {
    return RequireLevel(level, "Internal Error : nlvl out of range in GetLevelSmoothed") &&
           m_context.model.moveSelection.IsLevelSelected(level);
}

std::string CXSheetCursor::GetXsheetData(int level, int frame) const {
    if (!RequireLevel(level, "Internal Error : nlvl out of range in GetXsheetData") ||
        !RequireFrame(frame, "Internal Error : nfrm out of range in GetXsheetData"))
        return {};
    return m_context.model.Scene().xsheet.CellText(level, frame);
}

void CXSheetCursor::SetCursorX(int level) {
    if (!RequireLevel(level, "Internal Error : nlvl out of range in SetCursorX"))
        return;
    m_context.model.cursorLevel = level;
    m_context.Update(UpdateHint::CameraRedraw);
}

void CXSheetCursor::SetCursorY(int frame) {
    if (!RequireFrame(frame, "Internal Error : nfrm out of range in SetCursorY"))
        return;
    CSceneModel& model = m_context.model;
    model.cursorFrame = frame;
    // Held against the frame last set here, not the cursor: the line check moves that without having pictures
    // composed, and comes back to the picture that is there.
    const bool showsAnotherFrame = std::exchange(model.lastSetFrame, frame) != frame;
    m_context.Update(UpdateHint::Cells);
    if (showsAnotherFrame)
        m_context.Update(pictureHint);
}

void CXSheetCursor::SetSelStartX(int level) {
    if (RequireLevel(level, "Internal Error : nlvl out of range in SetSelStartX"))
        m_context.model.selection.firstLevel = level;
}

void CXSheetCursor::SetSelEndX(int level) {
    if (RequireLevel(level, "Internal Error : nlvl out of range in SetSelEndX"))
        m_context.model.selection.lastLevel = level;
}

void CXSheetCursor::SetSelStartY(int frame) {
    if (RequireFrame(frame, "Internal Error : nfrm out of range in SetSelStartY"))
        m_context.model.selection.firstFrame = frame;
}

void CXSheetCursor::SetSelEndY(int frame) {
    if (RequireFrame(frame, "Internal Error : nfrm out of range in SetSelEndY"))
        m_context.model.selection.lastFrame = frame;
}

void CXSheetCursor::GoTo(CSheetCell cell) {
    m_context.model.selection = {cell.level, cell.level, cell.frame, cell.frame};
    SetCursorX(cell.level);
    SetCursorY(cell.frame);
}

void CXSheetCursor::SetLevelCanMove(int level) {
    if (!RequireLevel(level, "Internal Error : nlvl out of range in SetLevelCanMove"))
        return;
    m_context.model.moveSelection.ToggleLevel(level, m_context.model.Scene().xsheet.LevelCount());
    m_context.Update(selectionHint);
}

void CXSheetCursor::SelectCamera() {
    m_context.model.moveSelection.SelectCamera();
    m_context.Update(selectionHint);
}

void CXSheetCursor::ToggleMultipleMoveSelection() {
    if (m_context.model.moveSelection.ToggleMultiple())
        m_context.Update(selectionHint);
}

} // namespace velmor
