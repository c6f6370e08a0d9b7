#include "scene/PaintTools.h"

#include "image/paint/Fill.h"
#include "image/paint/Tools.h"
#include "scene/SceneModel.h"

#include <algorithm>

namespace velmor {

namespace {

constexpr int penReach = 8;

enum BucketMode { solidFill, gradientFill, boxFill };

CRect Between(CPoint a, CPoint b) {
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
}

} // namespace

std::optional<int> Anywhere(const CPaintChoices&) {
    return std::nullopt;
}

std::optional<int> PenReach(const CPaintChoices&) {
    return penReach;
}

std::optional<int> BrushReach(const CPaintChoices& choices) {
    return BrushRadius(choices.brush) + 2; // with the pixel beside a dot
}

ToolForm BucketForm(const CPaintChoices& choices) {
    return choices.bucketMode == gradientFill ? ToolForm::Line
           : choices.bucketMode == boxFill    ? ToolForm::Rectangle
                                              : ToolForm::Point;
}

ToolForm PenForm(const CPaintChoices&) {
    return ToolForm::Stroke;
}

ToolForm BrushForm(const CPaintChoices& choices) {
    return choices.brush >= 0 ? ToolForm::Stroke : ToolForm::Rectangle;
}

ToolForm OwnForm(const CPaintChoices&) {
    return ToolForm::Own;
}

CPaintResult PaintNothing(CCelImg&, const CPaintChoices&, CPoint, CPoint) {
    return {};
}

CPaintResult Pour(CCelImg& image, const CPaintChoices& choices, CPoint press, CPoint release) {
    const CRect rect = Between(press, release);
    switch (choices.bucketMode) {
    case gradientFill:
        return FillGradient(image, press.x, press.y, choices.foreground, release.x, release.y, choices.background);
    case boxFill:
        return FillBox(image, rect.x, rect.endX, rect.y, rect.endY, choices.foreground);
    default:
        return Fill(image, release.x, release.y, choices.foreground);
    }
}

CPaintResult DrawPen(CCelImg& image, const CPaintChoices& choices, CPoint from, CPoint to) {
    return PenStroke(image, from, to, choices.pen);
}

CPaintResult Erase(CCelImg& image, const CPaintChoices& choices, CPoint from, CPoint to) {
    const CRect rect = Between(from, to);
    return BrushForm(choices) == ToolForm::Stroke
               ? EraserStroke(image, from, to, choices.brush, choices.background)
               : DrawEraserRect(image, rect.x, rect.endX, rect.y, rect.endY, choices.background);
}

CPaintResult ColorLines(CCelImg& image, const CPaintChoices& choices, CPoint from, CPoint to) {
    const CRect rect = Between(from, to);
    return BrushForm(choices) == ToolForm::Stroke
               ? LineBrushStroke(image, from, to, choices.brush, choices.foreground)
               : DrawLineBrushRect(image, rect.x, rect.endX, rect.y, rect.endY, choices.foreground);
}

std::optional<CToolTip> TipOf(CelTool tool, const CPaintChoices& choices) {
    const double brushWidth = 2 * BrushRadius(choices.brush) + 1;
    switch (tool) {
    case CelTool::Pen:
        return CToolTip{TipAction::Ink, {}, 2.0 * choices.pen + 1};
    case CelTool::Eraser:
        if (BrushForm(choices) == ToolForm::Stroke)
            return CToolTip{TipAction::Erase, choices.background, brushWidth};
        return std::nullopt;
    case CelTool::LineBrush:
        if (BrushForm(choices) == ToolForm::Stroke)
            return CToolTip{TipAction::Recolor, choices.foreground, brushWidth};
        return std::nullopt;
    default:
        return std::nullopt;
    }
}

bool CanUse(CelTool tool, const CCelImg& image) {
    return image.GetLoadState() != LoadState::Picture || ToolOf(tool).onPictures;
}

} // namespace velmor
