#pragma once

#include "image/Geometry.h"
#include "image/paint/MaskPlane.h"

#include <optional>

namespace velmor {

/// The two line pixels between which a way leads through. They may lie just outside the image, whose border counts
/// as a line.
struct CPassage {
    CPoint from;
    CPoint to;

    int SquaredLength() const { return (to.x - from.x) * (to.x - from.x) + (to.y - from.y) * (to.y - from.y); }
    bool operator==(const CPassage&) const = default;
};

/// The passage that a free pixel lies in or near to: from the nearest line pixel to the nearest one on the other
/// side, both moved on to where they are nearest to each other. Nothing when one of them is farther than `reach`.
std::optional<CPassage> PassageAt(const CMaskPlane& lines, CPoint at, int reach);

} // namespace velmor
