#include "scene/ShapePainter.h"

#include "image/stroke/PixelWay.h"
#include "image/stroke/Shapes.h"
#include "scene/StrokePainter.h"

namespace velmor {

namespace {

bool IsRound(CelTool tool) {
    return tool == CelTool::Curve || tool == CelTool::Ellipse;
}

// The pixels that the pen goes to one after the other, straight from each to the next.
std::vector<CPoint> PixelsOf(CelTool tool, const std::vector<CRealPoint>& outline) {
    std::vector<CPoint> pixels;
    CPixelWay way;
    for (const CRealPoint& point : outline) {
        if (!IsRound(tool)) {
            if (pixels.empty() || pixels.back() != StampPixel(point))
                pixels.push_back(StampPixel(point)); // a corner stays one
            continue;
        }
        const std::vector<CPoint> more = way.Move({point.x, point.y + 1});
        pixels.insert(pixels.end(), more.begin(), more.end());
    }
    const std::vector<CPoint> last = way.End();
    pixels.insert(pixels.end(), last.begin(), last.end());
    return pixels;
}

} // namespace

std::vector<CRealPoint> OutlineOf(CelTool tool, CRealPoint from, CRealPoint to, CRealPoint bend, bool isEven,
                                  bool fromCentre) {
    const CShapeHold hold{isEven, fromCentre};
    switch (tool) {
    case CelTool::Line:
        return LineShape(from, to, hold);
    case CelTool::Curve:
        return CurveShape(from, to, bend);
    case CelTool::Rectangle:
        return RectangleShape(from, to, hold);
    case CelTool::Ellipse:
        return EllipseShape(from, to, hold);
    default:
        return {};
    }
}

CPaintResult PaintOutline(CCelPainting& painting, CelTool tool, const std::vector<CRealPoint>& outline) {
    const std::vector<CPoint> pixels = PixelsOf(tool, outline);
    CPaintResult all;
    if (pixels.empty() || !painting.Begin(tool, pixels.front()))
        return all;
    for (std::size_t i = 1; i + 1 < pixels.size() && all.status; ++i) {
        const CPaintResult result = painting.Move(pixels[i]);
        all = {result.status, Union(all.changed, result.changed)};
    }
    if (!all.status) {
        painting.Cancel();
        return all;
    }
    const CPaintResult result = painting.End(pixels.back());
    return {result.status, Union(all.changed, result.changed)};
}

} // namespace velmor
