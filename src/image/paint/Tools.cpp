#include "image/paint/Tools.h"

#include "image/paint/Brushes.h"
#include "image/paint/PaintBounds.h"
#include "image/paint/PixelSpans.h"
#include "image/paint/Stroke.h"

#include <algorithm>

namespace velmor {

namespace {

CPaintResult NotLoaded(const char* message) {
    return {CStatus::Failure(message), {}};
}

/// The result of an operation that modifies the image when it changes a pixel.
CPaintResult Changed(CCelImg& image, const CRect& rect) {
    if (!rect.IsEmpty())
        image.SetModified(true);
    return {CStatus(), rect};
}

/// Whether a stamp at this place may reach the image; what is far outside must not overflow.
bool IsNear(const CCelImg& image, int x, int y, int reach) {
    return x >= -reach && y >= -reach && x - reach < image.Width() && y - reach < image.Height();
}

void StampPen(CCelImg& cel, int x, int y, int pen, CPaintBounds& bounds) {
    if (pen < 0 || pen >= penCount || !IsNear(cel, x, y, penReach))
        return;
    const CPenMask& mask = penMasks[static_cast<std::size_t>(pen)];
    const CColor black{0, 0, 0, 255};
    for (int row = std::max(y - penReach, 0); row <= std::min(y + penReach, cel.Height() - 1); ++row)
        for (int column = std::max(x - penReach, 0); column <= std::min(x + penReach, cel.Width() - 1); ++column) {
            const std::string_view ink = mask[static_cast<std::size_t>(row - y + penReach)];
            if (ink[static_cast<std::size_t>(column - x + penReach)] != '#')
                continue;
            cel.SetLine(column, row, true);
            cel.SetColorAt(column, row, black);
            bounds.AddSpan(row, column, column + 1);
        }
}

/// Stamps `row` of a soft brush, whose column 0 is at image column firstX, on columns x to endX - 1.
void StampAlpha(CCelImg& picture, int y, int x, int endX, std::span<const std::uint8_t> row, int firstX,
                BrushAction action, CPaintBounds& bounds) {
    std::uint8_t* const alphas = picture.PlaneOf(Channel::Alpha).data() + picture.IndexOf(0, y);
    for (int column = x; column < endX; ++column)
        if (const int weight = row[static_cast<std::size_t>(column - firstX)]; weight > 0) {
            alphas[column] = SoftAlpha(alphas[column], weight, action);
            bounds.AddSpan(y, column, column + 1);
        }
}

void StampBrush(CCelImg& image, int x, int y, int number, BrushAction action, CColor color, CPaintBounds& bounds) {
    if (number < 0 || number >= brushCount || !IsNear(image, x, y, brushReach))
        return;
    const CBrush& brush = BrushOf(number);
    const bool isCel = !image.LineMask().empty();
    color.alpha = 255;
    for (int i = std::max(0, brushReach - y); i < std::min(brushSide, image.Height() - y + brushReach); ++i) {
        const auto row = static_cast<std::size_t>(i);
        const int begin = std::max(x + brush.hard[row].begin, 0);
        const int end = std::min(x + brush.hard[row].end, image.Width());
        if (begin >= end)
            continue;
        if (isCel)
            TreatLines(image, y + i - brushReach, begin, end, action, color, bounds);
        else
            StampAlpha(image, y + i - brushReach, begin, end, brush.soft[row], x - brushReach, action, bounds);
    }
}

CPaintResult BrushStamp(CCelImg& image, int x, int y, int brush, BrushAction action, CColor color) {
    CPaintBounds bounds;
    StampBrush(image, x, y, brush, action, color, bounds);
    return Changed(image, bounds.Rect());
}

CPaintResult BrushStroke(CCelImg& image, CPoint from, CPoint to, int brush, BrushAction action, CColor color) {
    CPaintBounds bounds;
    WalkStroke(from, to, {image.Width(), image.Height()}, brushReach,
               [&](int x, int y) { StampBrush(image, x, y, brush, action, color, bounds); });
    image.SetModified(true);
    return {CStatus(), bounds.Rect()};
}

CPaintResult BrushRect(CCelImg& image, const CRect& wanted, BrushAction action, CColor color) {
    const CRect rect{std::max(wanted.x, 0), std::max(wanted.y, 0), std::min(wanted.endX, image.Width()),
                     std::min(wanted.endY, image.Height())};
    if (rect.IsEmpty())
        return {};
    color.alpha = 255;
    CPaintBounds bounds;
    for (int y = rect.y; y < rect.endY; ++y)
        if (!image.LineMask().empty()) {
            TreatLines(image, y, rect.x, rect.endX, action, color, bounds);
        } else {
            const std::uint8_t alpha = action == BrushAction::Erase ? 0 : 255;
            std::fill_n(image.PlaneOf(Channel::Alpha).data() + image.IndexOf(rect.x, y), rect.endX - rect.x, alpha);
            bounds.AddSpan(y, rect.x, rect.endX);
        }
    return Changed(image, bounds.Rect());
}

constexpr const char* noCelInPen = "Internal Error : cel is not loaded in Pen";
constexpr const char* nothingInLineBrush = "Internal Error : cel is not loaded in LineBrush";
constexpr const char* nothingInEraser = "Internal Error : cel/picture is not loaded in Eraser";

} // namespace

CPaintResult Pen(CCelImg& image, int x, int y, int pen) {
    if (image.GetLoadState() != LoadState::Cel)
        return NotLoaded(noCelInPen);
    CPaintBounds bounds;
    StampPen(image, x, y, pen, bounds);
    return Changed(image, bounds.Rect());
}

CPaintResult PenStroke(CCelImg& image, CPoint from, CPoint to, int pen) {
    if (image.GetLoadState() != LoadState::Cel)
        return NotLoaded(noCelInPen);
    CPaintBounds bounds;
    WalkStroke(from, to, {image.Width(), image.Height()}, penReach,
               [&](int x, int y) { StampPen(image, x, y, pen, bounds); });
    image.SetModified(true);
    return {CStatus(), bounds.Rect()};
}

CPaintResult LineBrush(CCelImg& image, int x, int y, int brush, CColor color) {
    if (image.GetLoadState() == LoadState::Nothing)
        return NotLoaded(nothingInLineBrush);
    return BrushStamp(image, x, y, brush, BrushAction::DrawLine, color);
}

CPaintResult LineBrushStroke(CCelImg& image, CPoint from, CPoint to, int brush, CColor color) {
    if (image.GetLoadState() == LoadState::Nothing)
        return NotLoaded(nothingInLineBrush);
    return BrushStroke(image, from, to, brush, BrushAction::DrawLine, color);
}

CPaintResult Eraser(CCelImg& image, int x, int y, int brush, CColor color) {
    if (image.GetLoadState() == LoadState::Nothing)
        return NotLoaded(nothingInEraser);
    return BrushStamp(image, x, y, brush, BrushAction::Erase, color);
}

CPaintResult EraserStroke(CCelImg& image, CPoint from, CPoint to, int brush, CColor color) {
    if (image.GetLoadState() == LoadState::Nothing)
        return NotLoaded(nothingInEraser);
    return BrushStroke(image, from, to, brush, BrushAction::Erase, color);
}

CPaintResult DrawEraserRect(CCelImg& image, int x0, int x1, int y0, int y1, CColor color) {
    if (image.GetLoadState() == LoadState::Nothing)
        return NotLoaded("Internal Error : cel/picture is not loaded in DrawEraserRect");
    return BrushRect(image, {x0, y0, x1, y1}, BrushAction::Erase, color);
}

CPaintResult DrawLineBrushRect(CCelImg& image, int x0, int x1, int y0, int y1, CColor color) {
    if (image.GetLoadState() == LoadState::Nothing)
        return NotLoaded("Internal Error : cel/picture is not loaded in DrawLineBrushRect");
    return BrushRect(image, {x0, y0, x1, y1}, BrushAction::DrawLine, color);
}

} // namespace velmor
