#pragma once

#include "platform/files/Files.h"

namespace velmor {

/// Folder of the running program's own file.
Path ProgramFolder();
/// The user's configuration and data folders (XDG base directories), without a name of ours below them.
Path UserConfigurationFolder();
Path UserDataFolder();
/// For what a program remembers between its runs and nobody would copy to another machine.
Path UserStateFolder();
/// For files that are needed for a moment. Shared by all users.
Path TemporaryFolder();
/// Whether a file can be made in `folder` (or in the nearest folder above it that exists).
bool FolderIsWritable(const Path& folder);

} // namespace velmor
