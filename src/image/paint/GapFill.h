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
    CMaskPlane pixels; ///< as large as the cel; empty for a line pixel or one outside
    CRect bounds;
    std::optional<CPoint> leak;
};

/// The area that a fill of a pixel would paint. May throw std::bad_alloc.
CFillArea FindFillArea(const CCelImg& cel, CPoint at, const CGapFillChoices& choices);
/// Paints an area, which was found in an image of this size.
void PaintArea(CCelImg& cel, const CFillArea& area, CColor color);

// What is refused because of a leak changes nothing, and the result says where.
CPaintResult GapFill(CCelImg& cel, CPoint at, CColor color, const CGapFillChoices& choices);
/// As FillGradient().
CPaintResult GapFillGradient(CCelImg& cel, CPoint from, CColor color1, CPoint to, CColor color2,
                             const CGapFillChoices& choices);
/// Fills every room that lies wholly inside the rectangle between two corners, which belong to it.
CPaintResult GapFillBox(CCelImg& cel, CPoint corner1, CPoint corner2, CColor color, const CGapFillChoices& choices);
/// Fills every room that lies wholly inside a loop drawn by hand, which is closed by a straight line. Pixels count
/// as inside by their centres.
CPaintResult FillLoop(CCelImg& cel, std::span<const CPoint> loop, CColor color, const CGapFillChoices& choices);

/// The gaps that a fill with these choices finds closed, from line pixel to line pixel, the widest first. May throw
/// std::bad_alloc.
std::vector<CPassage> FindGaps(const CCelImg& cel, const CGapFillChoices& choices);

} // namespace velmor
