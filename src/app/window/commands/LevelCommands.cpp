#include "app/window/commands/CommandRows.h"
#include "app/window/commands/MenuCommands.h"
#include "scene/CommandState.h"
#include "scene/XSheetOperations.h"
#include "scene/sheet/SheetDisplay.h"

#include <optional>

namespace velmor::commands {

namespace {

bool AreSelectedFolded(const Target& target) {
    const std::optional<CXSheetSelection> selected = SelectedCells(target.doc.Model());
    return selected && target.doc.SheetDisplay().AreFolded(selected->firstLevel, selected->lastLevel);
}
void FoldSelected(Target& target) {
    if (const std::optional<CXSheetSelection> selected = SelectedCells(target.doc.Model()))
        target.doc.SheetDisplay().Fold(selected->firstLevel, selected->lastLevel, !AreSelectedFolded(target));
}
// By one place, to the left for -1.
template<int By>
bool CanMoveLevels(const Target& target) {
    const std::optional<CXSheetSelection> selected = SelectedCells(target.doc.Model());
    return selected && selected->firstLevel + By >= 0 &&
           selected->lastLevel + By < target.doc.Model().Scene().xsheet.LevelCount();
}

constexpr CCommand rows[] = {
    {CommandId::LevelMoveLeft, "Move &Left", "level-left", "", "Moves the selected levels by one place to the left",
     "Move Level Left", CanMoveLevels<-1>, nullptr, Do<&CVelmorltDoc::XSheet, &CXSheetOperations::MoveLevelsLeft>,
     sheet},
    {CommandId::LevelMoveRight, "Move &Right", "level-right", "",
     "Moves the selected levels by one place to the right", "Move Level Right", CanMoveLevels<1>, nullptr,
     Do<&CVelmorltDoc::XSheet, &CXSheetOperations::MoveLevelsRight>, sheet},
    {CommandId::LevelFold, "&Fold", "", "", "Shows the selected levels as strips, or as columns again",
     "Fold Levels", HasScene, AreSelectedFolded, FoldSelected, sheet},
    {CommandId::LevelUnfoldAll, "&Unfold All", "", "", "Shows all levels as columns again", "Unfold All Levels",
     [](const Target& target) { return target.doc.SheetDisplay().Folded().any(); }, nullptr,
     Do<&CVelmorltDoc::SheetDisplay, &CSheetDisplay::UnfoldAll>, sheet},
};

} // namespace

std::span<const CCommand> LevelCommands() {
    return rows;
}

} // namespace velmor::commands
