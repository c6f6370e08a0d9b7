#pragma once

#include "image/CelImg.h"
#include "image/paint/MaskPlane.h"
#include "image/paint/PaintResult.h"
#include "image/paint/Passage.h"

#include <optional>
#include <span>
#include <vector>

namespace velmor {

// Bucket fills that close gaps between lines (see CGapMap). Like the plain ones they are bounded by line pixels,
// and the paint that is there already plays no part.

constexpr int mostFillGap = 32;
constexpr int mostUnderLine = 4;

struct CGapFillChoices {
    int gap = 0; ///< up to which gaps are closed, 0 to mostFillGap pixels
    /// Whether a fill that still runs out to the border of the image is refused. What would do so even with gaps of
    /// three times the size (at least 24 pixels) closed is the background and no leak. Without a gap nothing is
    /// refused.
    bool refuseLeaks = false;
    /// So many pixels, 0 to mostUnderLine, paint goes on under the lines of other cels, never farther than to their
    /// middle, so that no seam is left between paint and line. A line of the cel itself has nothing under it: its
    /// pixels hold one colour, that of the line.
    int underLine = 0;
    const CMaskPlane* otherLines = nullptr; ///< of other cels, as large as the cel; null for none
};

/// What a fill is going to paint: the pixels, or where it would leak out and is refused.
struct CFillArea {
    CMaskPlane pixels; ///< as large as the cel
    CRect bounds;      ///< empty for nothing to paint
    std::optional<CPoint> leak;
};

// All of these may throw std::bad_alloc.

/// The area of a pixel; nothing for one of a line or outside.
CFillArea FindFillArea(const CCelImg& cel, CPoint at, const CGapFillChoices& choices);
/// Every room that lies wholly inside the rectangle between two corners, whose outline is not inside.
CFillArea FindBoxArea(const CCelImg& cel, CPoint corner1, CPoint corner2, const CGapFillChoices& choices);
/// Every room that lies wholly inside a loop drawn by hand, which is closed by a straight line.
CFillArea FindLoopArea(const CCelImg& cel, std::span<const CPoint> loop, const CGapFillChoices& choices);

/// Paints an area of a cel, unless it leaks, which the result then says.
CPaintResult PaintArea(CCelImg& cel, const CFillArea& area, CColor color);
/// Paints it as FillGradient() does, between two different points.
CPaintResult PaintArea(CCelImg& cel, const CFillArea& area, CPoint from, CColor color1, CPoint to, CColor color2);

/// The gaps that a fill finds closed, from line pixel to line pixel, the widest first.
std::vector<CPassage> FindGaps(const CMaskPlane& lines, int gap);

} // namespace velmor
