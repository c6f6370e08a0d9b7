#pragma once

#include "image/CelImg.h"
#include "image/Palette.h"

#include <cstddef>
#include <vector>

namespace velmor {

/// The colours of an image, the most frequent first and at most so many, with the palette's names for those that it
/// has and the others as "#rrggbb". None when nothing is loaded.
std::vector<CNamedColor> NamedColorsOf(const CCelImg& image, const CPalette& palette, std::size_t most);

} // namespace velmor
