#pragma once

#include "platform/process/Interrupt.h"

namespace velmor {

// How the tool ends. All subcommands know the first three; those that render tell a farm more.
inline constexpr int statusDone = 0;
inline constexpr int statusFailed = 1;
inline constexpr int statusWrongUsage = 2;
inline constexpr int statusSceneUnreadable = 3;
inline constexpr int statusInputMissing = 4;
inline constexpr int statusOutputUnwritable = 5;
inline constexpr int statusFrameFailed = 6;
inline constexpr int statusTerminated = terminatedStatus;

} // namespace velmor
