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

} // namespace velmor::commands
