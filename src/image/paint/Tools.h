#pragma once

#include "image/CelImg.h"
#include "image/paint/PaintResult.h"

namespace velmor {

// The pen, the round brushes and the rectangle forms. All coordinates are buffer coordinates (row 0 at the bottom);
// what lies outside the image is skipped. Colours are taken without their alpha. A pen number outside 0 to 3 or a
// brush number outside 0 to 5 does nothing. Strokes stamp along the line, both ends included.

CPaintResult Pen(CCelImg& image, int x, int y, int pen);
CPaintResult PenStroke(CCelImg& image, CPoint from, CPoint to, int pen);

/// Recolours line pixels of a cel; makes a picture more opaque.
CPaintResult LineBrush(CCelImg& image, int x, int y, int brush, CColor color);
CPaintResult LineBrushStroke(CCelImg& image, CPoint from, CPoint to, int brush, CColor color);

/// Turns line pixels of a cel into paint of `color`; makes a picture more transparent.
CPaintResult Eraser(CCelImg& image, int x, int y, int brush, CColor color);
CPaintResult EraserStroke(CCelImg& image, CPoint from, CPoint to, int brush, CColor color);

/// The rectangle forms: columns x0 to x1 - 1, rows y0 to y1 - 1, clamped to the image.
CPaintResult DrawEraserRect(CCelImg& image, int x0, int x1, int y0, int y1, CColor color);
CPaintResult DrawLineBrushRect(CCelImg& image, int x0, int x1, int y0, int y1, CColor color);

/// Radius in pixels of a brush number, for outlines on the screen; 0 for a number out of range.
int BrushRadius(int brush);

} // namespace velmor
