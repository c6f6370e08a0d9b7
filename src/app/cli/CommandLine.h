#pragma once

namespace velmor {

/// Runs velmor-cli. Returns its exit status: 0 done, 1 the operation failed (its message is on the standard error
/// output), 2 wrong usage.
int RunCommandLine(int argc, char** argv);

} // namespace velmor
