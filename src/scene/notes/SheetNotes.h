#pragma once

#include "scene/SceneContext.h"
#include "xsheet/SheetCell.h"

#include <functional>
#include <vector>

namespace velmor {

/// Marks and comments in the sheet. Each command is a step of the history; one that changes nothing leaves none.
class CSheetNotes {
public:
    explicit CSheetNotes(CSceneContext context) : m_context(context) {}

    /// Marks the selected cells; taken off again if all of them have the mark. Of several cells those that go on
    /// with the drawing before them are left out.
    void Mark(SheetMark mark);
    /// The same with a colour.
    void SetColor(NoteColor color);
    /// Takes mark, colour and comment off every selected cell.
    void Clear();
    /// A note for one cell, or one frame, of the sheet.
    void SetAt(CSheetCell cell, const CSheetNote& note);
    void SetAtFrame(int frame, const CSheetNote& note);

private:
    using NoteChange = std::function<void(CSheetNote& note)>;

    std::vector<CSheetCell> CellsToMark() const;
    void Change(const char* name, const std::vector<CSheetCell>& cells, const NoteChange& change);

    CSceneContext m_context;
};

} // namespace velmor
