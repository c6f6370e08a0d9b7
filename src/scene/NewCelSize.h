#pragma once

#include "image/Geometry.h"
#include "platform/Status.h"

#include <cstdint>

namespace velmor {

/// The most pixels of a side that everything can work with: painting, turning, the xsheet.
inline constexpr int largestCelSide = 32767;

/// Whether a blank cel may have a size, with `freeBytes` of memory to make and edit it in. A refusal carries the
/// text to show. Sizes that are too small are not asked about here: making the cel refuses them.
CStatus CheckNewCelSize(const CSize& size, std::uint64_t freeBytes);

} // namespace velmor
