#include "app/window/commands/CommandRows.h"
#include "app/window/commands/MenuCommands.h"
#include "scene/CommandState.h"
#include "scene/notes/SheetNotes.h"

namespace velmor::commands {

namespace {

// Of the cell at the cursor; null without one.
const CSheetNote* CursorNote(const Target& target) {
    const CSceneModel& model = target.doc.Model();
    const CXSheet& xsheet = model.Scene().xsheet;
    const bool isCell = model.sceneOpen && xsheet.HasLevel(model.cursorLevel) && xsheet.HasFrame(model.cursorFrame);
    return isCell ? &xsheet.Cell(model.cursorLevel, model.cursorFrame).Note() : nullptr;
}
template<SheetMark Kind>
bool IsMarked(const Target& target) {
    const CSheetNote* note = CursorNote(target);
    return note != nullptr && note->mark == Kind;
}
template<SheetMark Kind>
void Mark(Target& target) {
    target.doc.Notes().Mark(Kind);
}
template<NoteColor Color>
bool IsColored(const Target& target) {
    const CSheetNote* note = CursorNote(target);
    return note != nullptr && note->color == Color;
}
template<NoteColor Color>
void ColorMark(Target& target) {
    target.doc.Notes().SetColor(Color);
}

constexpr CCommand rows[] = {
    {CommandId::NoteKey, "&Key\tK", "mark-key", "K", "Marks the selected cels as keys, or takes the mark off",
     "Mark as Key", HasScene, IsMarked<SheetMark::Key>, Mark<SheetMark::Key>, sheet, Focused},
    {CommandId::NoteBreakdown, "&Breakdown\tB", "mark-breakdown", "B",
     "Marks the selected cels as breakdowns, or takes the mark off", "Mark as Breakdown", HasScene,
     IsMarked<SheetMark::Breakdown>, Mark<SheetMark::Breakdown>, sheet, Focused},
    {CommandId::NoteInbetween, "&Inbetween\tI", "mark-inbetween", "I",
     "Marks the selected cels as inbetweens, or takes the mark off", "Mark as Inbetween", HasScene,
     IsMarked<SheetMark::Inbetween>, Mark<SheetMark::Inbetween>, sheet, Focused},
    {CommandId::NoteStopHold, "&Stop-hold\tX", "mark-stop-hold", "X",
     "Marks where the movement stands still, or takes the mark off", "Mark as Stop-hold", HasScene,
     IsMarked<SheetMark::StopHold>, Mark<SheetMark::StopHold>, sheet, Focused},
    {CommandId::NoteRed, "&Red", "", "", "Gives the marks of the selected cels a color, or takes it off",
     "Red Mark", HasScene, IsColored<NoteColor::Red>, ColorMark<NoteColor::Red>, sheet},
    {CommandId::NoteOrange, "&Orange", "", "", "Gives the marks of the selected cels a color, or takes it off",
     "Orange Mark", HasScene, IsColored<NoteColor::Orange>, ColorMark<NoteColor::Orange>, sheet},
    {CommandId::NoteYellow, "&Yellow", "", "", "Gives the marks of the selected cels a color, or takes it off",
     "Yellow Mark", HasScene, IsColored<NoteColor::Yellow>, ColorMark<NoteColor::Yellow>, sheet},
    {CommandId::NoteGreen, "&Green", "", "", "Gives the marks of the selected cels a color, or takes it off",
     "Green Mark", HasScene, IsColored<NoteColor::Green>, ColorMark<NoteColor::Green>, sheet},
    {CommandId::NoteBlue, "B&lue", "", "", "Gives the marks of the selected cels a color, or takes it off",
     "Blue Mark", HasScene, IsColored<NoteColor::Blue>, ColorMark<NoteColor::Blue>, sheet},
    {CommandId::NoteViolet, "&Violet", "", "", "Gives the marks of the selected cels a color, or takes it off",
     "Violet Mark", HasScene, IsColored<NoteColor::Violet>, ColorMark<NoteColor::Violet>, sheet},
    {CommandId::NoteCell, "&Comment...\tN", "note", "N", "Edits mark, color and comment of the current cel",
     "Comment", HasScene, nullptr, Do<&CVelmorltDoc::Notes, &CSheetNotes::EditAtCursor>, sheet, Focused},
    {CommandId::NoteFrame, "&Frame Comment...\tSHIFT N", "note-frame", "Shift+N",
     "Edits color and comment of the current frame", "Frame Comment", HasScene, nullptr,
     Do<&CVelmorltDoc::Notes, &CSheetNotes::EditAtFrame>, sheet, Focused},
    {CommandId::NoteClear, "Cl&ear", "", "", "Takes marks, colors and comments off the selected cels",
     "Clear Marks", HasScene, nullptr, Do<&CVelmorltDoc::Notes, &CSheetNotes::Clear>, sheet},
    {CommandId::NoteNext, "Ne&xt Note\tALT DOWN", "", "Alt+Down",
     "Goes to the next place that is marked or commented", "Next Note", HasScene, nullptr,
     Do<&CVelmorltDoc::Notes, &CSheetNotes::GoToNext>, sheet, Focused},
    {CommandId::NotePrevious, "&Previous Note\tALT UP", "", "Alt+Up",
     "Goes to the place before that is marked or commented", "Previous Note", HasScene, nullptr,
     Do<&CVelmorltDoc::Notes, &CSheetNotes::GoToPrevious>, sheet, Focused},
    {CommandId::NoteList, "&All Marks and Notes...", "", "", "Lists all that is marked or commented, to go there",
     "All Marks and Notes", HasScene, nullptr, Do<&CVelmorltDoc::Notes, &CSheetNotes::ShowList>, sheet},
    {CommandId::NoteEndHold, "End &Hold Here\tSHIFT X", "end-hold", "Shift+X",
     "Empties the current cel and those behind it that hold its drawing", "End Hold Here", When<CanEditCellData>,
     nullptr, Do<&CVelmorltDoc::Notes, &CSheetNotes::StopHold>, sheet, Focused},
};

} // namespace

std::span<const CCommand> NoteCommands() {
    return rows;
}

} // namespace velmor::commands
