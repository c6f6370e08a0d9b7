#pragma once

#include "image/RealPoint.h"

namespace velmor {

/// How a view is turned and mirrored against its image, as one turns the paper while drawing: first mirrored left
/// to right, then turned.
struct CViewTurn {
    double degrees = 0; ///< clockwise on the screen, 0 to below 360
    bool mirrored = false;

    bool IsUpright() const { return degrees == 0 && !mirrored; }
    /// Turned further by some degrees, either way.
    CViewTurn TurnedBy(double more) const;
    /// What a mirror beside the screen shows: what stood on the left stands on the right.
    CViewTurn Mirrored() const;
    /// From the upright display to the turned one, about the centre of both; y points down.
    CRealPoint Apply(CRealPoint fromCentre) const;
    CRealPoint Undo(CRealPoint fromCentre) const;

    bool operator==(const CViewTurn&) const = default;
};

} // namespace velmor
