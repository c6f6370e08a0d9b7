#include "app/window/commands/CommandRows.h"
#include "app/window/commands/MenuCommands.h"
#include "scene/CommandState.h"
#include "scene/SceneHistory.h"
#include "scene/SoundOperations.h"
#include "scene/XSheetOperations.h"
#include "views/cel/PieceClipboard.h"

#include <cstdint>
#include <string>

namespace velmor::commands {

namespace {

// What is painted on is seen in the cel editor, everything else in the sheet, and of the current frame in the
// camera view as well.
void ShowWhatMoves(Target& target, const CHistory::CStep* step) {
    if (step == nullptr)
        return;
    if (!step->heading.image.empty())
        target.frame.ShowPane(celEditor);
    else if (!target.frame.Panes().IsOpen(camera) || !IsInPicture(step, target.doc.Model().cursorFrame))
        target.frame.ShowPane(sheet);
}
std::int64_t LastDone(const Target& target) {
    const CHistory::CStep* step = target.doc.Model().history.NextUndo();
    return step != nullptr ? step->id : 0;
}
// What floats becomes a step, which is taken back: what it was lifted from is selected again.
void Undo(Target& target) {
    CCelSelection& selection = target.doc.Selection();
    const bool floats = selection.IsFloating();
    const std::int64_t before = LastDone(target);
    selection.Drop();
    if (!floats || LastDone(target) != before) {
        ShowWhatMoves(target, target.doc.Model().history.NextUndo());
        target.doc.History().Undo();
    }
    if (floats) {
        selection.SelectAgain();
        target.cel.ShowEdit({});
    }
}
void Redo(Target& target) {
    ShowWhatMoves(target, target.doc.Model().history.NextRedo());
    target.doc.History().Redo();
}
std::string UndoText(const Target& target) {
    return target.doc.History().UndoText();
}
std::string RedoText(const Target& target) {
    return target.doc.History().RedoText();
}
// In the cel editor the menu's cut, copy and paste mean pixels, elsewhere cells.
template<CommandId Id>
CommandId OfSelection(const Target& target) {
    return target.cel.hasFocus() && HasSelection(target) ? Id : CommandId::Separator;
}
CommandId PasteOfSelection(const Target& target) {
    const bool pastesPixels = target.cel.hasFocus() && HasEditedImage(target.doc.Model()) &&
                              (!CanPaste(target.doc.Model()) || HasPieceOnClipboard());
    return pastesPixels ? CommandId::CelPaste : CommandId::Separator;
}

constexpr CCommand rows[] = {
    {CommandId::EditUndo,
     "&Undo\tCtrl+Z",
     "undo",
     "Ctrl+Z; Alt+Backspace",
     "Undo the last action",
     "Undo",
     When<CanUndo>,
     nullptr,
     Undo,
     {},
     Everywhere,
     CommandGroup::None,
     "",
     UndoText},
    {CommandId::EditRedo,
     "&Redo\tCtrl+Shift+Z",
     "redo",
     "Ctrl+Shift+Z; Ctrl+Y",
     "Does again what was undone last",
     "Redo",
     When<CanRedo>,
     nullptr,
     Redo,
     {},
     Everywhere,
     CommandGroup::None,
     "",
     RedoText},
    {CommandId::EditHistory, "&History...", "history", "",
     "Shows everything that was done to the scene, to go to any step of it", "History", HasScene, nullptr,
     Do<&CVelmorltDoc::History, &CSceneHistory::Show>},
    {CommandId::EditCut, "Cu&t\tCtrl+X,DEL", "cut", "Ctrl+X; Del; Shift+Del",
     "Cut the selection and put it on the Clipboard", "Cut", HasScene, nullptr,
     Do<&CVelmorltDoc::XSheet, &CXSheetOperations::Cut>, sheet, Focused, CommandGroup::None, "", nullptr,
     OfSelection<CommandId::CelCut>},
    {CommandId::EditCopy, "&Copy\tCtrl+C", "copy", "Ctrl+C; Ctrl+Ins",
     "Copy the selection and put it on the Clipboard", "Copy", HasScene, nullptr,
     Do<&CVelmorltDoc::XSheet, &CXSheetOperations::Copy>, sheet, Focused, CommandGroup::None, "", nullptr,
     OfSelection<CommandId::CelCopy>},
    {CommandId::EditPaste, "&Paste\tCtrl+V", "paste", "Ctrl+V; Shift+Ins", "Insert Clipboard contents", "Paste",
     When<CanPaste>, nullptr, Do<&CVelmorltDoc::XSheet, &CXSheetOperations::Paste>, sheet, Focused,
     CommandGroup::None, "", nullptr, PasteOfSelection},
    {CommandId::EditCondense, "Con&dense Cels", "condense", "",
     "Condenses the selection in xsheet by removing one duplicate from each repetition of cels", "Condense",
     When<CanEditRange>, nullptr, Do<&CVelmorltDoc::XSheet, &CXSheetOperations::Condense>, sheet},
    {CommandId::EditExpand, "&Expand Cels", "expand", "",
     "Expands the selection in xsheet by putting one extra frame for each cel", "Expand", When<CanEditRange>,
     nullptr, Do<&CVelmorltDoc::XSheet, &CXSheetOperations::Expand>, sheet},
    {CommandId::EditReverse, "&Reverse Cels", "reverse", "", "Reverses the order of selected cels on the xsheet",
     "Reverse", When<CanEditRange>, nullptr, Do<&CVelmorltDoc::XSheet, &CXSheetOperations::Reverse>, sheet},
    {CommandId::EditRemoveSound, "Remove &Sound", "remove-sound", "", "Removes the sound at cursor from xsheet",
     "Remove Sound", HasScene, nullptr, Do<&CVelmorltDoc::Sounds, &CSoundOperations::RemoveSelectedSounds>, sheet},
};

} // namespace

std::span<const CCommand> EditCommands() {
    return rows;
}

} // namespace velmor::commands
