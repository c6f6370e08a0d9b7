#include "views/cel/CelTool.h"

#include "image/paint/Fill.h"
#include "image/paint/Tools.h"
#include "scene/SceneModel.h"

#include <algorithm>

namespace velmor {

namespace {

enum BucketMode { solidFill, gradientFill, boxFill };

CPaintResult Pour(const CPaintChoices& paint, CPoint from, CPoint to, const CRect& rect, CCelImg& image) {
    switch (paint.bucketMode) {
    case gradientFill:
        return FillGradient(image, from.x, from.y, paint.foreground, to.x, to.y, paint.background);
    case boxFill:
        return FillBox(image, rect.x, rect.endX, rect.y, rect.endY, paint.foreground);
    default:
        return Fill(image, to.x, to.y, paint.foreground);
    }
}

} // namespace

bool CanUse(CelTool tool, const CCelImg& image) {
    return image.GetLoadState() != LoadState::Picture || tool == CelTool::Eraser || tool == CelTool::LineBrush;
}

ToolForm FormOf(CelTool tool, const CPaintChoices& paint) {
    if (tool == CelTool::Pen)
        return ToolForm::Stroke;
    if (tool != CelTool::Bucket)
        return paint.brush >= 0 ? ToolForm::Stroke : ToolForm::Rectangle;
    return paint.bucketMode == gradientFill ? ToolForm::Line
           : paint.bucketMode == boxFill    ? ToolForm::Rectangle
                                            : ToolForm::Point;
}

CPaintResult PaintSegment(CelTool tool, const CPaintChoices& paint, CPoint from, CPoint to, CCelImg& image) {
    switch (tool) {
    case CelTool::Pen:
        return PenStroke(image, from, to, paint.pen);
    case CelTool::Eraser:
        return EraserStroke(image, from, to, paint.brush, paint.background);
    case CelTool::LineBrush:
        return LineBrushStroke(image, from, to, paint.brush, paint.foreground);
    case CelTool::Bucket:
        break;
    }
    return {};
}

CPaintResult PaintRelease(CelTool tool, const CPaintChoices& paint, CPoint from, CPoint release, CCelImg& image) {
    if (FormOf(tool, paint) == ToolForm::Stroke)
        return PaintSegment(tool, paint, from, release, image);
    const CRect rect{std::min(from.x, release.x), std::min(from.y, release.y), std::max(from.x, release.x),
                     std::max(from.y, release.y)};
    if (tool == CelTool::Bucket)
        return Pour(paint, from, release, rect, image);
    return tool == CelTool::Eraser
               ? DrawEraserRect(image, rect.x, rect.endX, rect.y, rect.endY, paint.background)
               : DrawLineBrushRect(image, rect.x, rect.endX, rect.y, rect.endY, paint.foreground);
}

} // namespace velmor
