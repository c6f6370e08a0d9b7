#include "image/paint/Fill.h"

#include "image/paint/GradientPaint.h"
#include "image/paint/SeedFill.h"
#include "image/paint/SolidPaint.h"

#include <algorithm>
#include <functional>

namespace velmor {

namespace {

bool IsFillable(const CCelImg& cel) {
    return cel.Width() <= CSeedFill::largestSide && cel.Height() <= CSeedFill::largestSide;
}

/// A seed fill from one pixel; the image counts as modified when that pixel can be filled. The area is found first
/// and painted after that, row by row: memory likes it better than the order in which a fill finds its way.
template<class Paint>
CRect FillFrom(CCelImg& cel, int x, int y, Paint paint) {
    CFillBarrier barrier(cel);
    CSeedFill fill(barrier);
    fill.Run(x, y);
    const CRect changed = fill.Visited();
    barrier.ForEachVisitedRun(changed, std::ref(paint));
    if (!changed.IsEmpty())
        cel.SetModified(true);
    return changed;
}

CPaintResult FillSolid(CCelImg& cel, int x, int y, CColor color) {
    if (!IsFillable(cel))
        return {};
    return PaintWithMemory([&] { return FillFrom(cel, x, y, CSolidPaint(cel, color)); });
}

/// The rectangle of a box fill: all four sides belong to it, and two of them may lie just outside the image.
struct CBox {
    int x0, x1, y0, y1;

    bool IsEmpty() const { return x0 >= x1 || y0 >= y1; }
};

CBox ClampBox(CBox box, const CCelImg& cel) {
    return {std::max(box.x0, 0), box.x1 > cel.Width() ? cel.Width() - 1 : box.x1, std::max(box.y0, 0),
            box.y1 > cel.Height() ? cel.Height() - 1 : box.y1};
}

/// Runs the fill from every pixel of row y between two columns, both included.
void FillFromRow(CFillBarrier& barrier, CSeedFill& fill, int y, int x0, int x1) {
    if (y >= barrier.Height())
        return;
    const MaskWord* const row = barrier.Row(y);
    const int endX = std::min(x1 + 1, barrier.Width());
    for (int x = NextFree(row, x0, endX); x < endX; x = NextFree(row, x + 1, endX))
        fill.Run(x, y);
}

/// Keeps fills out of every area that the box's outline touches.
void CloseOutline(CFillBarrier& barrier, const CBox& box) {
    CSeedFill fill(barrier);
    FillFromRow(barrier, fill, box.y0, box.x0, box.x1);
    FillFromRow(barrier, fill, box.y1, box.x0, box.x1);
    for (const int x : {box.x0, box.x1})
        for (int y = box.y0; y <= box.y1; ++y)
            fill.Run(x, y);
    barrier.ForgetVisits();
}

CRect FillInside(CCelImg& cel, const CBox& box, CColor color) {
    CFillBarrier barrier(cel);
    CloseOutline(barrier, box);
    CSeedFill fill(barrier);
    for (int y = box.y0; y <= box.y1; ++y)
        FillFromRow(barrier, fill, y, box.x0, box.x1);
    barrier.ForEachVisitedRun(fill.Visited(), CSolidPaint(cel, color));
    return fill.Visited();
}

} // namespace

CPaintResult Fill(CCelImg& image, int x, int y, CColor color) {
    if (image.GetLoadState() != LoadState::Cel)
        return {CStatus::Failure("Internal Error : cel is not loaded in Fill"), {}};
    return FillSolid(image, x, y, color);
}

CPaintResult FillGradient(CCelImg& image, int x0, int y0, CColor color1, int x1, int y1, CColor color2) {
    if (image.GetLoadState() != LoadState::Cel)
        return {CStatus::Failure("Internal Error : cel is not loaded in FillGradient"), {}};
    if (x0 == x1 && y0 == y1)
        return FillSolid(image, x0, y0, color1);
    if (!IsFillable(image))
        return {};
    return PaintWithMemory([&] {
        return FillFrom(image, x0, y0, CGradientPaint(image, {x0, y0}, color1, {x1, y1}, color2));
    });
}

CPaintResult FillBox(CCelImg& image, int x0, int x1, int y0, int y1, CColor color) {
    if (image.GetLoadState() != LoadState::Cel)
        return {CStatus::Failure("Internal Error : cel is not loaded in FillBox"), {}};
    const CBox box = ClampBox({x0, x1, y0, y1}, image);
    if (box.IsEmpty() || !IsFillable(image))
        return {};
    CPaintResult result = PaintWithMemory([&] { return FillInside(image, box, color); });
    if (result.status)
        image.SetModified(true);
    return result;
}

} // namespace velmor
