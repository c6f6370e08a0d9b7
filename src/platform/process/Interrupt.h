#pragma once

namespace velmor {

/// From now on a request to end the process (SIGINT, SIGTERM, SIGHUP) first removes the temporary files of every
/// CAtomicFile still open; the process then dies of the signal as it would have done. A signal that the process was
/// started to ignore stays ignored. For programs without a window; call it before files are written.
void RemoveUnfinishedFilesOnInterrupt();

} // namespace velmor
