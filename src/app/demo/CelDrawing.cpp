#include "app/demo/CelDrawing.h"

#include "app/demo/Region.h"
#include "image/paint/Fill.h"
#include "image/paint/Tools.h"

#include <cmath>

namespace velmor::demo {

namespace {

constexpr double broadLineHalf = 3.5; ///< of the broadest pen's line
constexpr int eraserBrush = 0;        ///< radius 1: takes a hair line away and little else

CPoint PixelOf(CSpot spot) {
    return {static_cast<int>(std::lround(spot.x)), static_cast<int>(std::lround(spot.y))};
}

} // namespace

CCelDrawing::CCelDrawing(CCelImg& cel, CColor paper) : m_cel(cel) {
    DrawEraserRect(m_cel, 0, m_cel.Width(), 0, m_cel.Height(), paper);
    Fill(m_cel, 0, 0, paper);
}

void CCelDrawing::Line(const CCurve& curve, PenWidth pen) {
    for (std::size_t i = 1; i < curve.size(); ++i) {
        const CPoint from = PixelOf(curve[i - 1]);
        const CPoint to = PixelOf(curve[i]);
        if (from != to)
            PenStroke(m_cel, from, to, static_cast<int>(pen));
    }
}

void CCelDrawing::Stroke(const CCurve& closed, PenWidth pen) {
    Line(closed, pen);
    Line({closed.back(), closed.front()}, pen);
}

void CCelDrawing::EraseLinesInside(const CCurve& closed, CColor color) {
    for (const CRun& run : RunsInside(closed))
        DrawEraserRect(m_cel, run.x, run.endX, run.row, run.row + 1, color);
}

void CCelDrawing::Pour(const CCurve& closed, const CPour& pour) {
    const CSpot heart = Heart(closed);
    if (!pour.shade) {
        const CPoint press = PixelOf(heart);
        Fill(m_cel, press.x, press.y, pour.color);
        return;
    }
    const CSpot towardsLight = Turned({Clearance(closed, heart), 0}, pour.lightDegrees);
    const CPoint press = PixelOf(heart + towardsLight * 0.7);
    const CPoint release = PixelOf(heart - towardsLight * pour.reach);
    FillGradient(m_cel, press.x, press.y, *pour.shade, release.x, release.y, pour.color);
}

void CCelDrawing::Shape(const std::vector<CCurve>& parts, const CPour& pour, PenWidth pen) {
    for (const CCurve& part : parts)
        EraseLinesInside(part, pour.color);
    for (const CCurve& part : parts)
        Stroke(part, pen);
    if (parts.size() > 1) // leaves the outer half of the outline around the whole
        for (const CCurve& part : parts)
            EraseLinesInside(part, pour.color);
    Pour(parts.front(), pour);
}

void CCelDrawing::Shape(const CCurve& outline, const CPour& pour, PenWidth pen) {
    Shape(std::vector<CCurve>{outline}, pour, pen);
}

void CCelDrawing::Marking(const CCurve& outline, const CPour& pour, const CCurve& shape) {
    const CCurve marking = HeldInside(outline, shape);
    Stroke(marking, PenWidth::Hair);
    Pour(marking, pour);
    // The part along the shape's own line stays: it cannot be told from that line.
    const auto isFree = [&](CSpot spot) { return Clearance(shape, spot) > broadLineHalf + 1; };
    for (std::size_t i = 0; i < marking.size(); ++i) {
        const CSpot from = marking[i];
        const CSpot to = marking[(i + 1) % marking.size()];
        if (isFree(from) && isFree(to))
            EraserStroke(m_cel, PixelOf(from), PixelOf(to), eraserBrush, pour.shade.value_or(pour.color));
    }
}

void CCelDrawing::Spot(const CCurve& outline, const CPour& pour) {
    Stroke(outline, PenWidth::Hair);
    Pour(outline, pour);
    for (std::size_t i = 0; i < outline.size(); ++i)
        EraserStroke(m_cel, PixelOf(outline[i]), PixelOf(outline[(i + 1) % outline.size()]), eraserBrush,
                     pour.color);
}

void CCelDrawing::ColorLines(CColor color) {
    DrawLineBrushRect(m_cel, 0, m_cel.Width(), 0, m_cel.Height(), color);
}

} // namespace velmor::demo
