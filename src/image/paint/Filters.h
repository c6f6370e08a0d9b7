#pragma once

#include "image/CelImg.h"
#include "image/paint/PaintResult.h"

namespace velmor {

/// Blends the pixels beside a cel's lines with the lines' colours, in place, once over the image.
CPaintResult Smooth(CCelImg& image);

/// Box blur of all four planes in place; radii in pixels, negative ones count as 0.
CPaintResult Blur(CCelImg& image, int horizontalRadius, int verticalRadius);

} // namespace velmor
