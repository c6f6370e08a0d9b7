#pragma once

#include "image/Geometry.h"
#include "scene/SceneContext.h"

#include <optional>
#include <string>

namespace velmor {

/// The xsheet as the views and commands use it: checked accessors, cursor and selections, structural and cell
/// edits, undo, dropping assets. An index out of range shows its message and changes nothing.
class CXSheetOperations {
public:
    explicit CXSheetOperations(CSceneContext context) : m_context(context) {}

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

    void SetLevelCanMove(int level);
    void SelectCamera();
    void ToggleMultipleMoveSelection();

    void AddLevel();
    void DeleteLevel();
    void RenameLevel();
    void SwapLevels();
    void AddFrames();
    void DeleteFrames();

    void Copy();
    void Cut();
    void Paste();
    void Reverse();
    void Condense();
    void Expand();
    void Undo();

    /// Puts the selected assets on a level, each for `step` frames, from `frame` on; with `insert` the cells there
    /// move down first.
    void DropCels(int level, int frame, int step, bool insert);
    /// Selects the cell, asks how the selected assets are to be exposed and drops them there. A cell outside the
    /// xsheet: nothing.
    void AskAndDropCels(int level, int frame, CPoint screenPoint);

private:
    [[nodiscard]] bool RequireLevel(int level, const char* message) const;
    [[nodiscard]] bool RequireFrame(int frame, const char* message) const;
    std::optional<int> AskLevel(const char* prompt) const;
    std::optional<std::string> AskLevelName(const std::string& initial) const;
    std::optional<int> AskFrameCount(const char* prompt) const;
    void EditRange(const char* name, void (CXSheet::*change)(const CXSheetSelection&));
    void FillWithSelectedAssets(CXSheet& xsheet, int level, int frame, int held) const;

    CSceneContext m_context;
};

} // namespace velmor
