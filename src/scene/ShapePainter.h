#pragma once

#include "image/RealPoint.h"
#include "scene/CelPainting.h"

#include <vector>

namespace velmor {

/// The outline of a shape, between two points that it is dragged out by; of a curve `bend` is where it goes through
/// half-way. Empty for a tool that draws none.
std::vector<CRealPoint> OutlineOf(CelTool tool, CRealPoint from, CRealPoint to, CRealPoint bend, bool isEven,
                                  bool fromCentre);

/// Draws an outline with the chosen pen, as one step of the history by the name of the tool. Points are those of
/// the image, and the pen stamps where StampPixel() has it.
CPaintResult PaintOutline(CCelPainting& painting, CelTool tool, const std::vector<CRealPoint>& outline);

} // namespace velmor
