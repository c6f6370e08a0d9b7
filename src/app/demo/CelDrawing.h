#pragma once

#include "app/demo/Curves.h"
#include "image/CelImg.h"

#include <optional>

namespace velmor::demo {

/// The cel editor's pens, by their width.
enum class PenWidth { Hair = 0, Fine = 1, Medium = 2, Broad = 3 };

/// What a bucket pours: one colour, or a gradient from the light's side to the other.
struct CPour {
    CColor color;
    std::optional<CColor> shade; ///< what the side away from the light gets
    double lightDegrees = 110;   ///< direction towards the light
    double reach = 1.3;          ///< how far the gradient goes from the shape's heart, in widths of its room there

    CPour(CColor flat) : color(flat) {}
    CPour(CColor light, CColor dark, double degrees = 110, double reachOut = 1.3)
        : color(light), shade(dark), lightDegrees(degrees), reach(reachOut) {}
};

/// Draws on a cel the way an animator does: pen lines along curves, bucket fills between them, eraser and line
/// brush to tidy up. What is drawn later covers what is there, its lines included. Coordinates are pixels of the
/// cel.
class CCelDrawing {
public:
    /// Empties the cel: no lines, and paper of `paper`, which should be transparent where levels below are to show.
    CCelDrawing(CCelImg& cel, CColor paper);

    /// An outlined, painted shape: the union of closed curves, the first of which touches all others.
    void Shape(const std::vector<CCurve>& parts, const CPour& pour, PenWidth pen = PenWidth::Broad);
    void Shape(const CCurve& outline, const CPour& pour, PenWidth pen = PenWidth::Broad);
    /// Paint without an outline of its own, inside a shape that has been drawn; what reaches over its edge is cut.
    void Marking(const CCurve& outline, const CPour& pour, const CCurve& shape);
    /// Paint without any outline.
    void Spot(const CCurve& outline, const CPour& pour);
    void Line(const CCurve& curve, PenWidth pen);
    /// Gives every pen line of the cel a colour.
    void ColorLines(CColor color);

private:
    void Stroke(const CCurve& closed, PenWidth pen);
    void EraseLinesInside(const CCurve& closed, CColor color);
    void Pour(const CCurve& closed, const CPour& pour);

    CCelImg& m_cel;
};

} // namespace velmor::demo
