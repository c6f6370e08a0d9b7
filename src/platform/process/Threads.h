#pragma once

namespace velmor {

/// Gives the calling thread the lowest priority, so that it works only when nothing else wants to.
void LowerThreadPriority();
/// Whether the calling thread has that priority.
bool HasLowestPriority();

} // namespace velmor
