#pragma once

#include "scene/SceneContext.h"
#include "xsheet/SheetCell.h"

#include <string>

namespace velmor {

/// Where the user is in the xsheet, and what is chosen there: the checked values that views show, the cursor, the
/// selected cells, and the levels that a drag moves. An index out of range shows its message and changes nothing.
class CXSheetCursor {
public:
    explicit CXSheetCursor(CSceneContext context) : m_context(context) {}

    std::string GetLevelName(int level) const;
    /// Whether the level is selected for moving, which is what "smoothed" stands for here.
    bool GetLevelSmoothed(int level) const;
    std::string GetXsheetData(int level, int frame) const;
    void SetCursorX(int level);
    void SetCursorY(int frame);
    void SetSelStartX(int level);
    void SetSelEndX(int level);
    void SetSelStartY(int frame);
    void SetSelEndY(int frame);
    /// Cursor and selection on one cell, which must be in the sheet.
    void GoTo(CSheetCell cell);

    void SetLevelCanMove(int level);
    void SelectCamera();
    void ToggleMultipleMoveSelection();

private:
    [[nodiscard]] bool RequireLevel(int level, const char* message) const;
    [[nodiscard]] bool RequireFrame(int frame, const char* message) const;

    CSceneContext m_context;
};

} // namespace velmor
