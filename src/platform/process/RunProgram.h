#pragma once

#include "platform/files/Files.h"

#include <string>
#include <vector>

namespace velmor {

/// The running program's own file.
Path ProgramFile();

/// Runs a program with arguments, in the place of this one for as long as it takes. Returns its exit status; -1
/// when it could not be started or died of a signal.
int RunProgram(const Path& program, const std::vector<std::string>& arguments);

} // namespace velmor
