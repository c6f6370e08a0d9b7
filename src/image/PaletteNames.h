#pragma once

#include "image/Palette.h"
#include "platform/Status.h"
#include "platform/files/Files.h"

namespace velmor {

// The colour data file has the letters of one language family. Names with others stand in full in a file beside it;
// in the colour data file itself they have question marks. Without this file nothing else is lost.

/// "Fox.colors.names" of "Fox.colors".
Path PaletteNamesFile(const Path& paletteFile);

/// Writes the names of a palette that its file has no letters for, and removes the file when there are none.
CStatus SavePaletteNames(const Path& file, const CPalette& palette);

/// Gives the entries of a palette their names in full. A name that does not belong to its entry any more, since the
/// colour data file was changed by a program that knows nothing of this one, is passed over. Fails for a damaged
/// file, whose names are not taken; without a file there are none.
CStatus LoadPaletteNames(const Path& file, CPalette& palette);

} // namespace velmor
