#pragma once

#include "scene/SceneContext.h"
#include "xsheet/NotedPlaces.h"
#include "xsheet/SheetCell.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace velmor {

class CXSheetCursor;

/// Marks and comments in the sheet. Each command is a step of the history; one that changes nothing leaves none.
class CSheetNotes {
public:
    CSheetNotes(CSceneContext context, CXSheetCursor& cursor) : m_context(context), m_cursor(cursor) {}

    /// Marks the selected cells; taken off again if all of them have the mark. Of several cells those that go on
    /// with the drawing before them are left out.
    void Mark(SheetMark mark);
    /// The same with a colour.
    void SetColor(NoteColor color);
    /// Takes mark, colour and comment off every selected cell.
    void Clear();
    /// Ask for the note of the cell at the cursor, and of the cursor's frame.
    void EditAtCursor();
    void EditAtFrame();
    /// From the cursor on its drawing is held no longer: the rest of the hold is emptied.
    void StopHold();
    /// The cursor goes to the next place, or the one before, at which something is noted; round at the ends.
    void GoToNext() { GoOn(1); }
    void GoToPrevious() { GoOn(-1); }
    /// Shows all that is noted, to go to one.
    void ShowList();

    /// A note for one cell, or one frame, of the sheet.
    void SetAt(CSheetCell cell, const CSheetNote& note);
    void SetAtFrame(int frame, const CSheetNote& note);

private:
    using NoteChange = std::function<void(CSheetNote& note)>;

    std::vector<CSheetCell> CellsToMark() const;
    std::optional<CSheetNote> Ask(const std::string& place, bool hasMark, const CSheetNote& initial);
    std::string PlaceText(const CNotedPlace& place) const;
    std::vector<CNotedPlace> PlacesOrTell() const;
    CSheetCell CellOf(const CNotedPlace& place) const;
    void GoOn(int direction);
    void Change(const char* name, const std::vector<CSheetCell>& cells, const NoteChange& change);

    CSceneContext m_context;
    CXSheetCursor& m_cursor;
};

} // namespace velmor
