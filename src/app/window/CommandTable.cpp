#include "app/window/CommandTable.h"

#include "app/window/commands/MenuCommands.h"

#include <algorithm>
#include <vector>

namespace velmor {

namespace {

std::vector<CCommand> AllRows() {
    using namespace commands;
    std::vector<CCommand> all;
    for (const std::span<const CCommand> menu :
         {FileCommands(), EditCommands(), AssetCommands(), CameraCommands(), SheetCommands(), ExposureCommands(),
          SheetSoundCommands(), LevelCommands(), SheetViewCommands(), NoteCommands(), CelViewCommands(),
          CelPaperCommands(), CelPaintCommands(), CelSelectionCommands(), SourceCommands(), AnimationCommands(),
          PreviewCommands(), ViewCommands(), HelpCommands()})
        all.insert(all.end(), menu.begin(), menu.end());
    return all;
}

} // namespace

std::span<const CCommand> Commands() {
    static const std::vector<CCommand> all = AllRows(); // actions keep the address of their row
    return all;
}

const CCommand& CommandOf(CommandId id) {
    return *std::ranges::find(Commands(), id, &CCommand::id);
}

} // namespace velmor
