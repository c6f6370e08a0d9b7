#pragma once

#include "image/CelImg.h"
#include "image/RealPoint.h"
#include "image/select/SelectionMask.h"

#include <span>

namespace velmor {

// What the selection tools select of an image. May throw std::bad_alloc.

/// The pixels of a rectangle.
CSelectionMask SelectRectangle(CSize image, const CRect& rect);
/// The pixels whose centres lie inside a line that is drawn round them, in image points; it is closed from its end
/// to its beginning. Where it crosses itself, all that it goes round is inside. Points that are no numbers are left
/// out.
CSelectionMask SelectPolygon(CSize image, std::span<const CRealPoint> line);
/// The pixels of the colour that a pixel has, each of red, green, blue and alpha within the tolerance: those that
/// hang together with it by their sides, or all. Nothing for a pixel beside the image.
CSelectionMask SelectColor(const CCelImg& image, CPoint pixel, int tolerance, bool connected);

} // namespace velmor
