#pragma once

#include "platform/Progress.h"

#include <memory>

namespace velmor {

/// Progress on the standard error output: a bar on a terminal, elsewhere flushed lines "FRAME: n" and "PROGRESS:
/// n%".
std::unique_ptr<IProgress> MakeConsoleProgress();

} // namespace velmor
