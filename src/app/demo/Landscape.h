#pragma once

#include "image/Geometry.h"

#include <cstdint>
#include <vector>

namespace velmor::demo {

inline constexpr CSize landscapeSize{1536, 700};

/// A painted picture: blue, green and red bytes, the bottom row first.
struct CPainting {
    CSize size;
    std::vector<std::uint8_t> pixels;
};

/// The meadow on a summer evening, with hills, trees and a path.
CPainting PaintLandscape();

} // namespace velmor::demo
