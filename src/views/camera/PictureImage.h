#pragma once

#include "views/ZoomLevel.h"

#include <QImage>

namespace velmor {

struct CFrameBuffer;
struct CSkinSheet;

/// The first `width` columns of a composed frame, top row first, in the format that paints fastest.
QImage ToImage(const CFrameBuffer& frame, int width);

/// What lies under a picture; null when nothing does.
QImage ToImage(const CSkinSheet& sheet);

/// A picture made ready for painting at a zoom on a screen of `pixelRatio`: reduced smoothly where it is shown
/// smaller, else as it is.
QImage ReadyForZoom(const QImage& picture, CZoomLevel zoom, double pixelRatio);

} // namespace velmor
