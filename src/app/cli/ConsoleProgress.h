#pragma once

#include "platform/Progress.h"

#include <memory>

namespace velmor {

enum class LogFormat { Text, Json };

/// Progress on the standard error output: a bar on a terminal, elsewhere flushed lines "FRAME: n" and "PROGRESS:
/// n%", and "FAILED: n reason" for a frame that could not be made. As JSON each line is an object.
std::unique_ptr<IProgress> MakeConsoleProgress(LogFormat log);

} // namespace velmor
