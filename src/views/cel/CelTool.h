#pragma once

#include "image/CelImg.h"
#include "image/paint/PaintResult.h"

namespace velmor {

struct CPaintChoices;

/// The tools of the cel editor.
enum class CelTool { Bucket = 0, Pen = 1, Eraser = 2, LineBrush = 3 };

/// Whether a tool works on what is loaded: pictures have no lines to draw or to stop a fill. With nothing loaded a
/// tool may be chosen for what comes.
bool CanUse(CelTool tool, const CCelImg& image);

/// What a tool makes of the way from press to release.
enum class ToolForm {
    Point,    ///< only the release counts
    Stroke,   ///< paints along the way
    Line,     ///< from the press to the release
    Rectangle ///< between press and release
};

/// `paint` decides between the forms that a tool has.
ToolForm FormOf(CelTool tool, const CPaintChoices& paint);

// Both take buffer coordinates, which may lie outside the image.

/// A piece of the way of a tool in the form of a stroke.
CPaintResult PaintSegment(CelTool tool, const CPaintChoices& paint, CPoint from, CPoint to, CCelImg& image);
/// What a tool in any form does when the button is released. `from` is the press, for a stroke the end of the last
/// segment.
CPaintResult PaintRelease(CelTool tool, const CPaintChoices& paint, CPoint from, CPoint release, CCelImg& image);

} // namespace velmor
