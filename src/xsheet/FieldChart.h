#pragma once

#include "image/Geometry.h"
#include "image/RealPoint.h"

namespace velmor {

/// A rectangle between pixels, y upwards.
struct CRealRect {
    double left = 0;
    double bottom = 0;
    double right = 0;
    double top = 0;

    double Width() const { return right - left; }
    double Height() const { return top - bottom; }
    CRealPoint Centre() const { return {(left + right) / 2, (bottom + top) / 2}; }
    bool operator==(const CRealRect&) const = default;
};

/// The whole of a frame.
CRealRect WholeFrame(CSize frame);
/// A field of a chart that has `fields` of them (12 or 16) from its middle to its edge: field 1 is the smallest,
/// that of the last number the whole frame.
CRealRect FieldOf(CSize frame, int field, int fields);
/// The largest rectangle of a ratio of width to height, in the middle of a frame.
CRealRect FrameOfRatio(CSize frame, double ratio);
/// What is surely seen: `percent` (1 to 100; others count as the nearest of these) of width and height.
CRealRect SafeArea(const CRealRect& frame, int percent);

} // namespace velmor
