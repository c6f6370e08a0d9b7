#pragma once

#include "image/Palette.h"
#include "platform/Status.h"

#include <cstdint>
#include <span>
#include <string>

namespace velmor {

// Palettes as other programs exchange them, in GIMP's ".gpl" text. It has no opacity: ours stands in comments that
// only we read.

/// The text of a palette. Line breaks in names become blanks.
std::string GimpPaletteText(const CPalette& palette, const std::string& title);

/// The colours of such a text, as many as there are. Names that are no UTF-8 are read as Windows-1252, so that none
/// is lost. On failure, which says in which line, `palette` is unchanged.
CStatus ReadGimpPalette(std::span<const std::uint8_t> bytes, CPalette& palette);

} // namespace velmor
