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

} // namespace velmor::commands
