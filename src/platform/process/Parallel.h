#pragma once

#include <functional>

namespace velmor {

/// Number of processors that work can be divided among, at least 1.
int ProcessorCount();

/// Divides work among so many (at least 1) instead of all that there are. For a program's start, before anything is
/// divided: others share the machine.
void SetProcessorCount(int count);

/// Makes the threads that ParallelFor() keeps, at the caller's priority. For a program's start; without it the
/// first call makes them.
void StartParallelThreads();

/// Calls work(begin, end) on consecutive parts of [0, count), one part a processor, and returns when all are done.
/// The parts are at least `grain` long. `work` must not throw. Threads are kept between calls, so that dividing a
/// millisecond of work pays. A caller of the lowest priority shares its work with threads of the lowest priority
/// only.
void ParallelFor(int count, int grain, const std::function<void(int begin, int end)>& work);

} // namespace velmor
