#include "app/window/commands/CommandRows.h"
#include "app/window/commands/MenuCommands.h"
#include "scene/CommandState.h"
#include "scene/RecolorOperations.h"
#include "views/cel/PieceClipboard.h"
#include "views/cel/SelectHand.h"

#include <optional>
#include <utility>

namespace velmor::commands {

namespace {

template<auto Operation>
void Selection(Target& target) {
    (target.doc.Selection().*Operation)();
    target.cel.ShowEdit({});
}
// An operation that changes the image, with its arguments.
template<auto Operation, auto... Arguments>
void EditSelection(Target& target) {
    target.cel.ShowEdit((target.doc.Selection().*Operation)(Arguments...));
}
template<SelectWhat What>
bool IsTaken(const Target& target) {
    return target.doc.Selection().What() == What;
}
template<SelectWhat What>
void Take(Target& target) {
    target.doc.Selection().SetWhat(What);
    target.cel.ShowEdit({});
}
void CopySelection(Target& target) {
    if (const std::optional<CPiece> piece = target.doc.Selection().Copied())
        PutOnClipboard(*piece);
}
void CutSelection(Target& target) {
    CopySelection(target);
    target.cel.ShowEdit(target.doc.Selection().Delete("Cut"));
}
void DeleteSelection(Target& target) {
    target.cel.ShowEdit(target.doc.Selection().Delete());
}
void PastePiece(Target& target) {
    std::optional<CPiece> piece = TakeFromClipboard(target.cel.Middle());
    if (!piece)
        return;
    if (!CSelectHand::Holds(target.cel.Tool()))
        target.cel.SetTool(CelTool::SelectRect); // whose handles it gets
    target.cel.ShowEdit(target.doc.Selection().Paste(std::move(*piece)));
}
bool CanReplaceColor(const Target& target) {
    return HasEditedImage(target.doc.Model()) || CanChangeImages(target.doc.Model());
}

constexpr CCommand rows[] = {
    ToolCommand<CommandId::CelSelectRect, CelTool::SelectRect>(),
    ToolCommand<CommandId::CelLasso, CelTool::Lasso>(),
    ToolCommand<CommandId::CelSelectColor, CelTool::SelectColor>(),
    {CommandId::CelSelectAll, "Select &All\tCtrl+A", "", "Ctrl+A", "Selects the whole drawing", "Select All",
     When<HasEditedImage>, nullptr, Selection<&CCelSelection::SelectAll>, celEditor, Focused},
    {CommandId::CelSelectNone, "Select &Nothing\tCtrl+D", "", "Ctrl+D",
     "Puts down what floats, and selects nothing any more", "Select Nothing", HasSelection, nullptr,
     Selection<&CCelSelection::SelectNone>, celEditor, Focused},
    {CommandId::CelSelectInverse, "Select &Inverse\tCtrl+Shift+I", "", "Ctrl+Shift+I",
     "Selects what is not selected", "Select Inverse", When<HasEditedImage>, nullptr,
     Selection<&CCelSelection::Invert>, celEditor, Focused},
    {CommandId::CelCut, "Cu&t\tCtrl+X", "cut", "Ctrl+X; Shift+Del",
     "Cuts what is selected out of the drawing and puts it on the Clipboard", "Cut Selection", HasSelection,
     nullptr, CutSelection, celEditor, Focused},
    {CommandId::CelCopy, "&Copy\tCtrl+C", "copy", "Ctrl+C; Ctrl+Ins",
     "Puts what is selected of the drawing on the Clipboard", "Copy Selection", HasSelection, nullptr,
     CopySelection, celEditor, Focused},
    {CommandId::CelPaste, "&Paste\tCtrl+V", "paste", "Ctrl+V; Shift+Ins",
     "Lets what is on the Clipboard float over the drawing", "Paste into the drawing", When<HasEditedImage>,
     nullptr, PastePiece, celEditor, Focused},
    {CommandId::CelDelete, "&Delete\tDEL", "", "Del; Backspace", "Empties what is selected of the drawing",
     "Delete Selection", HasSelection, nullptr, DeleteSelection, celEditor, Focused},
    {CommandId::CelMirrorHorizontally, "Mirror &Horizontally", "flip", "",
     "Mirrors what is selected, left for right", "Mirror selection horizontally", HasSelection, nullptr,
     EditSelection<&CCelSelection::MirrorX>, celEditor},
    {CommandId::CelMirrorVertically, "Mirror &Vertically", "", "", "Mirrors what is selected, top for bottom",
     "Mirror selection vertically", HasSelection, nullptr, EditSelection<&CCelSelection::MirrorY>, celEditor},
    {CommandId::CelQuarterLeft, "Quarter Turn &Left", "", "",
     "Turns what is selected by a quarter against the clock", "Turn selection left", HasSelection, nullptr,
     EditSelection<&CCelSelection::TurnBy, 90>, celEditor},
    {CommandId::CelQuarterRight, "Quarter Turn &Right", "rotate", "",
     "Turns what is selected by a quarter with the clock", "Turn selection right", HasSelection, nullptr,
     EditSelection<&CCelSelection::TurnBy, -90>, celEditor},
    {CommandId::CelSelectLines, "Take Lin&es", "", "", "Of what is selected, only lines are taken",
     "Take only lines", Always, IsTaken<SelectWhat::Line>, Take<SelectWhat::Line>, celEditor, Everywhere,
     CommandGroup::SelectionParts},
    {CommandId::CelSelectPaint, "Take Pai&nt", "", "", "Of what is selected, only paint is taken",
     "Take only paint", Always, IsTaken<SelectWhat::Paint>, Take<SelectWhat::Paint>, celEditor, Everywhere,
     CommandGroup::SelectionParts},
    {CommandId::CelSelectBoth, "Take &Both", "", "", "Lines and paint of what is selected are taken",
     "Take lines and paint", Always, IsTaken<SelectWhat::Both>, Take<SelectWhat::Both>, celEditor, Everywhere,
     CommandGroup::SelectionParts},
    {CommandId::CelSelectConnected, "Color as Far as It Han&gs Together", "", "",
     "Selecting by color takes the area that was clicked on, and not all of the color",
     "Select by color only as far as it hangs together", Always,
     [](const Target& target) { return target.doc.Selection().IsConnected(); },
     [](Target& target) { target.doc.Selection().SetConnected(!target.doc.Selection().IsConnected()); }, celEditor},
    {CommandId::CelReplaceColor, "Replace Colo&r...", "", "",
     "Puts one color in the place of another, in this drawing or in a whole folder", "Replace Color",
     CanReplaceColor, nullptr,
     [](Target& target) {
         target.doc.Selection().Drop();
         target.doc.Recoloring().AskAndReplace(target.doc.Selection().Color());
     }},
};

} // namespace

std::span<const CCommand> CelSelectionCommands() {
    return rows;
}

} // namespace velmor::commands
