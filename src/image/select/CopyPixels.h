#pragma once

#include "image/CelImg.h"

namespace velmor {

/// Makes a rectangle, as far as it lies in them, the same in `to` as in `from`: two images of the same kind and
/// size whose line masks differ there alone.
void CopyPixels(const CCelImg& from, const CRect& rect, CCelImg& to);

} // namespace velmor
