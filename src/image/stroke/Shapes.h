#pragma once

#include "image/RealPoint.h"

#include <vector>

namespace velmor {

// The outlines of what is drawn with a few points, as points that lie so close that the lines between them cannot
// be told from the curve.

/// How a shape is held while it is dragged out.
struct CShapeHold {
    bool isEven = false;     ///< a square, a circle, a direction in steps of 15 degrees
    bool fromCentre = false; ///< the press is the middle
};

/// A point brought to the nearest of the directions in steps of 15 degrees that lead away from `from`.
CRealPoint AlongSteps(CRealPoint from, CRealPoint to);

std::vector<CRealPoint> LineShape(CRealPoint press, CRealPoint release, CShapeHold hold);
/// Closed: it ends where it begins, as the ellipse does.
std::vector<CRealPoint> RectangleShape(CRealPoint press, CRealPoint release, CShapeHold hold);
/// Inside of the same rectangle, which it touches.
std::vector<CRealPoint> EllipseShape(CRealPoint press, CRealPoint release, CShapeHold hold);
/// A parabola that goes through `bend` half-way.
std::vector<CRealPoint> CurveShape(CRealPoint begin, CRealPoint end, CRealPoint bend);

} // namespace velmor
