#pragma once

#include "image/CelImg.h"

#include <optional>

namespace velmor {

/// How far a page is turned, in degrees counter-clockwise and up to 10 either way, from its long straight edges:
/// frame lines, or where it ends. Nothing when none is a third of the page long. `threshold` is for pictures: a
/// grey level below it is dark. May throw std::bad_alloc.
std::optional<double> FindPageTurn(const CCelImg& page, int threshold);

} // namespace velmor
