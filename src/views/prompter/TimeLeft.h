#pragma once

#include <cstdint>
#include <string>

namespace velmor {

/// How long work still takes of which `percent` took `elapsedMilliseconds`, in words. Empty for work that is short
/// altogether and while it is too early to tell.
std::string TimeLeftText(int percent, std::int64_t elapsedMilliseconds);

} // namespace velmor
