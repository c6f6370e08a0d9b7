#include "scene/notes/SheetNotes.h"

#include "scene/DialogRequests.h"
#include "scene/SceneEdit.h"
#include "scene/XSheetCursor.h"

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

void CSheetNotes::StopHold() {
    const CSceneModel& model = m_context.model;
    const CSheetCell cursor = model.CursorCell();
    const CXSheet& xsheet = model.Scene().xsheet;
    if (!model.sceneOpen || !xsheet.HasLevel(cursor.level) || !xsheet.HasFrame(cursor.frame) ||
        !xsheet.Cell(cursor.level, cursor.frame).IsUsed())
        return;
    CSceneEdit edit(m_context, "Stop Hold", cellsAndPictureHint);
    const CXSheetCell stopped = xsheet.Cell(cursor.level, cursor.frame);
    for (int frame = cursor.frame; xsheet.HasFrame(frame) && xsheet.Cell(cursor.level, frame).ShowsSameAs(stopped);
         ++frame)
        edit.XSheet().MutableCell(cursor.level, frame).ClearAsset();
}

std::optional<CSheetNote> CSheetNotes::Ask(const std::string& place, bool hasMark, const CSheetNote& initial) {
    const auto accept = [this](const CSheetNote& note) {
        return m_context.Require(note.comment.size() <= CSheetNote::mostText, "The comment is too long.");
    };
    return m_context.prompter.Ask(CNoteRequest{place, hasMark, initial, accept});
}

void CSheetNotes::EditAtCursor() {
    const CSceneModel& model = m_context.model;
    const CSheetCell cell = model.CursorCell();
    if (!model.sceneOpen || !model.Scene().xsheet.HasLevel(cell.level) ||
        !model.Scene().xsheet.HasFrame(cell.frame))
        return;
    if (const std::optional<CSheetNote> note = Ask(PlaceText({cell.frame, cell.level}), true,
                                                   model.Scene().xsheet.Cell(cell.level, cell.frame).Note()))
        SetAt(cell, *note);
}

void CSheetNotes::EditAtFrame() {
    const CSceneModel& model = m_context.model;
    const int frame = model.cursorFrame;
    if (!model.sceneOpen || !model.Scene().xsheet.HasFrame(frame))
        return;
    if (const std::optional<CSheetNote> note =
            Ask(PlaceText({frame, std::nullopt}), false, model.Scene().frameNotes.At(frame)))
        SetAtFrame(frame, *note);
}

std::string CSheetNotes::PlaceText(const CNotedPlace& place) const {
    const std::string frame = std::to_string(place.frame + 1);
    if (!place.level)
        return "Frame " + frame;
    const std::string name = m_context.model.Scene().xsheet.LevelName(*place.level);
    return (name.empty() ? "Level " + std::to_string(*place.level + 1) : name) + ", frame " + frame;
}

// A frame's own is shown at its first cell.
CSheetCell CSheetNotes::CellOf(const CNotedPlace& place) const {
    return {place.level.value_or(0), place.frame};
}

std::vector<CNotedPlace> CSheetNotes::PlacesOrTell() const {
    std::vector<CNotedPlace> places;
    if (m_context.model.sceneOpen && m_context.model.Scene().xsheet.LevelCount() > 0)
        places = NotedPlaces(m_context.model.Scene());
    if (places.empty())
        m_context.prompter.ShowStatus("Nothing is marked or noted in this sheet.");
    return places;
}

void CSheetNotes::GoOn(int direction) {
    const std::vector<CNotedPlace> places = PlacesOrTell();
    if (places.empty())
        return;
    const CSheetCell cursor = m_context.model.CursorCell();
    const auto isBehind = [&](const CNotedPlace& place, const CSheetCell& cell) {
        const CSheetCell at = CellOf(place);
        return std::pair(at.frame, at.level) > std::pair(cell.frame, cell.level);
    };
    const auto isBefore = [&](const CNotedPlace& place) {
        return !isBehind(place, cursor) && CellOf(place) != cursor;
    };
    if (direction > 0) {
        const auto next =
            std::ranges::find_if(places, [&](const CNotedPlace& place) { return isBehind(place, cursor); });
        m_cursor.GoTo(CellOf(next != places.end() ? *next : places.front()));
    } else {
        const auto last = std::find_if(places.rbegin(), places.rend(), isBefore);
        m_cursor.GoTo(CellOf(last != places.rend() ? *last : places.back()));
    }
}

void CSheetNotes::ShowList() {
    const std::vector<CNotedPlace> places = PlacesOrTell();
    if (places.empty())
        return;
    CNoteListRequest request;
    const CSheetCell cursor = m_context.model.CursorCell();
    for (const CNotedPlace& place : places) {
        if (!(CNotedPlace{cursor.frame, cursor.level} < place))
            request.current = request.notes.size();
        request.notes.push_back({PlaceText(place), NoteAt(m_context.model.Scene(), place)});
    }
    if (const std::optional<std::size_t> chosen = m_context.prompter.Ask(request);
        chosen && *chosen < places.size())
        m_cursor.GoTo(CellOf(places[*chosen]));
}

void CSheetNotes::SetAt(CSheetCell cell, const CSheetNote& note) {
    Change("Note", {cell}, [&note](CSheetNote& changed) { changed = Kept(note); });
}

void CSheetNotes::SetAtFrame(int frame, const CSheetNote& note) {
    CSceneEdit edit(m_context, "Frame Note", UpdateHint::Cells);
    edit.Scene().frameNotes.Set(frame, Kept(note));
}

} // namespace velmor
