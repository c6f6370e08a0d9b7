#pragma once

#include "views/ZoomLevel.h"

#include <QImage>

namespace velmor {

struct CFrameBuffer;

/// The first `width` columns of a composed frame, top row first, in the format that paints fastest.
QImage ToImage(const CFrameBuffer& frame, int width);

/// A picture made ready for painting at a zoom on a screen of `pixelRatio`: reduced smoothly where it is shown
/// smaller, else as it is.
QImage ReadyForZoom(const QImage& picture, CZoomLevel zoom, double pixelRatio);

} // namespace velmor
