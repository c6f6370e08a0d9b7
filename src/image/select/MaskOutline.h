#pragma once

#include "image/Geometry.h"

#include <functional>
#include <vector>

namespace velmor {

/// Goes round what is selected: closed lines along the sides of pixels, each a list of its corners in image points,
/// with what is selected on their left. Pixels that only touch at a corner are gone round apart. At most
/// `mostCorners` corners; what is left then has no line.
std::vector<std::vector<CPoint>> OutlineOf(const CRect& bounds, const std::function<bool(int x, int y)>& isSelected,
                                           std::size_t mostCorners = 1 << 20);

} // namespace velmor
