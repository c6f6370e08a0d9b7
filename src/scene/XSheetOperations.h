#pragma once

#include "image/Geometry.h"
#include "scene/SceneContext.h"
#include "xsheet/SheetCell.h"

#include <optional>
#include <string>

namespace velmor {

class CXSheetCursor;

/// The edits of the xsheet: levels, frames, cells, dropped assets, and undo. What cannot be done shows its message
/// and changes nothing.
class CXSheetOperations {
public:
    CXSheetOperations(CSceneContext context, CXSheetCursor& cursor) : m_context(context), m_cursor(cursor) {}

    void AddLevel();
    void DeleteLevel();
    void RenameLevel();
    void SwapLevels();
    /// Puts the levels from `first` to `last` in front of what is level `before`, behind all for the number of
    /// levels; cursor and selection go with their levels. Nothing where that is where they are.
    void MoveLevels(int first, int last, int before);
    /// The selected levels by one place.
    void MoveLevelsLeft();
    void MoveLevelsRight();
    void AddFrames();
    void DeleteFrames();

    void Copy();
    void Cut();
    void Paste();
    void Reverse();
    void Condense();
    void Expand();

    /// Puts the selected assets on a level, each for `step` frames, from `frame` on; with `insert` the cells there
    /// move down first.
    void DropCels(int level, int frame, int step, bool insert);
    /// Goes to the cell, asks how the selected assets are to be exposed and drops them there; nothing for a cell
    /// outside the xsheet. `screenPoint` is where the mouse let go.
    void AskAndDropCels(CSheetCell cell, CPoint screenPoint);

private:
    std::optional<int> AskLevel(const char* prompt) const;
    std::optional<std::string> AskLevelName(const std::string& initial) const;
    std::optional<int> AskFrameCount(const char* prompt) const;
    void EditRange(const char* name, void (CXSheet::*change)(const CXSheetSelection&));
    void FillWithSelectedAssets(CXSheet& xsheet, int level, int frame, int held) const;

    CSceneContext m_context;
    CXSheetCursor& m_cursor;
};

} // namespace velmor
