#pragma once

#include "image/Geometry.h"
#include "image/paint/MaskPlane.h"

#include <span>

namespace velmor {

/// The pixels of an image that a loop goes around, whichever way and however often it crosses itself. Its corners
/// are pixels, inside the image or outside; a straight line closes it. What lies on the loop may count or not. May
/// throw std::bad_alloc.
CMaskPlane InsideOfLoop(std::span<const CPoint> loop, CSize image);

} // namespace velmor
