#include "scene/notes/SheetNotes.h"

#include "scene/SceneEdit.h"

#include <algorithm>

namespace velmor {

namespace {

CSheetNote Kept(CSheetNote note) {
    note.comment = NoteText(std::move(note.comment));
    return note;
}

std::vector<CSheetCell> SelectedInSheet(const CSceneModel& model) {
    const CXSheet& xsheet = model.Scene().xsheet;
    const CXSheetSelection& selection = model.selection;
    std::vector<CSheetCell> cells;
    if (!model.sceneOpen)
        return cells;
    for (int level = selection.firstLevel; level <= selection.lastLevel; ++level)
        for (int frame = selection.firstFrame; frame <= selection.lastFrame; ++frame)
            if (xsheet.HasLevel(level) && xsheet.HasFrame(frame))
                cells.push_back({level, frame});
    if (cells.empty() && xsheet.HasLevel(model.cursorLevel) && xsheet.HasFrame(model.cursorFrame))
        cells.push_back(model.CursorCell());
    return cells;
}

} // namespace

std::vector<CSheetCell> CSheetNotes::CellsToMark() const {
    const CXSheet& xsheet = m_context.model.Scene().xsheet;
    std::vector<CSheetCell> cells = SelectedInSheet(m_context.model);
    const auto begins = [&xsheet](const CSheetCell& cell) {
        return xsheet.Cell(cell.level, cell.frame).IsUsed() &&
               (cell.frame == 0 ||
                !xsheet.Cell(cell.level, cell.frame).ShowsSameAs(xsheet.Cell(cell.level, cell.frame - 1)));
    };
    if (std::ranges::any_of(cells, begins) && cells.size() > 1)
        std::erase_if(cells, [&begins](const CSheetCell& cell) { return !begins(cell); });
    return cells;
}

void CSheetNotes::Change(const char* name, const std::vector<CSheetCell>& cells, const NoteChange& change) {
    if (cells.empty())
        return;
    CSceneEdit edit(m_context, name, UpdateHint::Cells);
    for (const CSheetCell& cell : cells) {
        CSheetNote note = edit.XSheet().Cell(cell.level, cell.frame).Note();
        change(note);
        if (note != edit.XSheet().Cell(cell.level, cell.frame).Note())
            edit.XSheet().MutableCell(cell.level, cell.frame).SetNote(std::move(note));
    }
}

void CSheetNotes::Mark(SheetMark mark) {
    const CXSheet& xsheet = m_context.model.Scene().xsheet;
    const std::vector<CSheetCell> cells = CellsToMark();
    const bool haveAll = std::ranges::all_of(
        cells, [&](const CSheetCell& cell) { return xsheet.Cell(cell.level, cell.frame).Note().mark == mark; });
    Change("Mark", cells, [&](CSheetNote& note) { note.mark = haveAll ? SheetMark::None : mark; });
}

void CSheetNotes::SetColor(NoteColor color) {
    const CXSheet& xsheet = m_context.model.Scene().xsheet;
    const std::vector<CSheetCell> cells = CellsToMark();
    const bool haveAll = std::ranges::all_of(
        cells, [&](const CSheetCell& cell) { return xsheet.Cell(cell.level, cell.frame).Note().color == color; });
    Change("Color Mark", cells, [&](CSheetNote& note) { note.color = haveAll ? NoteColor::None : color; });
}

void CSheetNotes::Clear() {
    Change("Clear Marks", SelectedInSheet(m_context.model), [](CSheetNote& note) { note = {}; });
}

void CSheetNotes::SetAt(CSheetCell cell, const CSheetNote& note) {
    Change("Note", {cell}, [&note](CSheetNote& changed) { changed = Kept(note); });
}

void CSheetNotes::SetAtFrame(int frame, const CSheetNote& note) {
    CSceneEdit edit(m_context, "Frame Note", UpdateHint::Cells);
    edit.Scene().frameNotes.Set(frame, Kept(note));
}

} // namespace velmor
