#pragma once

#include "image/DisplayBitmap.h"
#include "scene/paper/Drawing.h"

namespace velmor {

class CImageCache;

/// A drawing as the cel editor would show it, on a sheet as large as that of the one it is laid over, centre on
/// centre. On failure the status has the text to show.
CStatus FlippedPicture(const Path& file, CSize sheet, const CGridSettings& grid, CImageCache& images,
                       CDisplayBitmap& bitmap);

} // namespace velmor
