#pragma once

#include "image/CelImg.h"
#include "image/paint/GapFill.h"

namespace velmor {

/// Lets an area inside `bounds` go on under the lines of other cels, as the choices have it, and never under those
/// of the cel itself. What lies on the other side of a line grows against it, so that paint ends in the line's
/// middle. Returns the new bounds. May throw std::bad_alloc.
CRect GrowUnderLines(CMaskPlane& area, const CRect& bounds, const CCelImg& cel, const CGapFillChoices& choices);

} // namespace velmor
