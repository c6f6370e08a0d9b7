#pragma once

#include "platform/files/Files.h"

namespace velmor {

/// Where a damaged file can be kept beside what takes its place: "Fox.colors.damaged" of "Fox.colors", and
/// "Fox.colors.damaged2" and so on where that is taken.
Path FreeNameForDamaged(const Path& damaged);

} // namespace velmor
