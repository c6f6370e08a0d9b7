#pragma once

namespace velmor {

/// From now on a request to end the process (SIGINT, SIGTERM, SIGHUP) first removes the temporary files of every
/// CAtomicFile still open; the process then dies of the signal as it would have done. A signal that the process was
/// started to ignore stays ignored. For programs without a window; call it before files are written.
void RemoveUnfinishedFilesOnInterrupt();

/// From now on a file that reaches the limit of its size (SIGXFSZ) is one that cannot be written further, as on a
/// full disk, and no reason to die.
void SurviveFileSizeLimit();

/// The exit status of a process that was told to end (SIGTERM) after EndWithStatusOnTermination().
inline constexpr int terminatedStatus = 7;

/// From now on SIGTERM, after the same clearing up, ends the process with a status of its own. For work that a
/// queue may stop and start again: a status tells it more than the death by a signal, which has many causes.
void EndWithStatusOnTermination();

} // namespace velmor
