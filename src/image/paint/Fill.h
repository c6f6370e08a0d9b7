#pragma once

#include "image/CelImg.h"
#include "image/paint/PaintResult.h"

namespace velmor {

// Bucket fills of a cel, bounded by its line pixels; the paint that is there already plays no part. A scan-line
// seed fill over 4-connected pixels with a stack of 50000 segments: what does not fit is dropped, so a very ragged
// area may stay partly unfilled.

CPaintResult Fill(CCelImg& image, int x, int y, CColor color);

/// Paints the area around (x0, y0) with a gradient along the line to (x1, y1): color2 at the first point, color1 at
/// the second.
CPaintResult FillGradient(CCelImg& image, int x0, int y0, CColor color1, int x1, int y1, CColor color2);

/// Fills every area enclosed by lines that lies wholly inside the rectangle; both corners belong to it.
CPaintResult FillBox(CCelImg& image, int x0, int x1, int y0, int y1, CColor color);

} // namespace velmor
