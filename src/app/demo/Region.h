#pragma once

#include "app/demo/Curves.h"

namespace velmor::demo {

// Questions about the inside of a closed curve. What the curve goes around more than once is inside as well.

/// Columns x to endX - 1 of one row.
struct CRun {
    int x = 0;
    int endX = 0;
    int row = 0;
};

/// The pixels whose centres lie inside.
std::vector<CRun> RunsInside(const CCurve& closed);
bool IsInside(const CCurve& closed, CSpot spot);
/// The point of the closed curve nearest to `spot`.
CSpot NearestOn(const CCurve& closed, CSpot spot);
/// Distance to the nearest point of the curve.
double Clearance(const CCurve& closed, CSpot spot);
/// A point inside that keeps well clear of the curve: where a bucket fill begins.
CSpot Heart(const CCurve& closed);
/// `curve` with every point that lies outside `closed` moved to the nearest point of `closed`.
CCurve HeldInside(CCurve curve, const CCurve& closed);

} // namespace velmor::demo
