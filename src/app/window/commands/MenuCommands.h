#pragma once

#include "app/window/CommandTable.h"

#include <span>

namespace velmor::commands {

// The parts of the table of commands, in its order: the rows of a menu, or of a subject within one. Each is in the
// file of its name.

std::span<const CCommand> FileCommands();
std::span<const CCommand> EditCommands();
std::span<const CCommand> AssetCommands();
std::span<const CCommand> CameraCommands();
std::span<const CCommand> SheetCommands(); ///< the Xsheet menu but for its submenus
std::span<const CCommand> ExposureCommands();
std::span<const CCommand> SheetSoundCommands(); ///< Sound and Dialogue
std::span<const CCommand> LevelCommands();
std::span<const CCommand> SheetViewCommands(); ///< XSheet at a Glance
std::span<const CCommand> NoteCommands();      ///< Marks and Notes
std::span<const CCommand> CelViewCommands();   ///< how the cel editor shows its image
std::span<const CCommand> CelPaperCommands();  ///< the drawings around the one under edit
std::span<const CCommand> CelPaintCommands();  ///< tools and colors, and cleaning up
std::span<const CCommand> CelSelectionCommands();
std::span<const CCommand> SourceCommands();
std::span<const CCommand> AnimationCommands();
std::span<const CCommand> PreviewCommands(); ///< Play in Place
std::span<const CCommand> ViewCommands();
std::span<const CCommand> HelpCommands();

} // namespace velmor::commands
