#pragma once

class QColor;
class QPainter;
class QRect;

namespace velmor {

/// Fills an area with a colour of the palette. One that is not opaque is shown plain at the upper left and, at the
/// lower right, as it covers a checkerboard.
void PaintColor(QPainter& painter, const QRect& area, const QColor& color);

} // namespace velmor
