#pragma once

#include "image/Palette.h"

#include <string_view>
#include <vector>

namespace velmor::demo {

/// Every palette begins with it.
inline constexpr std::string_view transparentPaper = "TRANS";

/// The colours that the drawings of a folder add to the default palette, by name. "Air" is paper as transparent as
/// "TRANS" in a colour that suits the blurred edges of the drawing.
std::vector<CNamedColor> FoxColors();
std::vector<CNamedColor> ButterflyColors();
std::vector<CNamedColor> ShadowColors();
std::vector<CNamedColor> PlantColors();
std::vector<CNamedColor> CloudColors();
std::vector<CNamedColor> TitleColors();

/// The colour of that name; black when the palette has none.
CColor ColorNamed(const CPalette& palette, std::string_view name);

} // namespace velmor::demo
