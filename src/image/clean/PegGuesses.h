#pragma once

#include "image/clean/PegOutline.h"

#include <optional>
#include <vector>

namespace velmor {

/// Where the regions of a page could be the holes of a row of pegs: from any two that lie to one another as holes
/// do, the most likely first, and not more than are worth a closer look. `spacing` is that of the row in pixels,
/// if it is known.
std::vector<CPegGuess> GuessPegs(const CBlobs& blobs, CSize page, std::optional<double> spacing);

} // namespace velmor
