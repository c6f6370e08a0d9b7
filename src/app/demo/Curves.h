#pragma once

#include <initializer_list>
#include <utility>
#include <vector>

namespace velmor::demo {

/// A point or a direction on the paper: pixels, y up.
struct CSpot {
    double x = 0;
    double y = 0;
};

constexpr CSpot operator+(CSpot a, CSpot b) {
    return {a.x + b.x, a.y + b.y};
}
constexpr CSpot operator-(CSpot a, CSpot b) {
    return {a.x - b.x, a.y - b.y};
}
constexpr CSpot operator*(CSpot a, double factor) {
    return {a.x * factor, a.y * factor};
}
double LengthOf(CSpot spot);
/// The point `t` of the way from a to b.
constexpr CSpot Between(CSpot a, CSpot b, double t) {
    return a + (b - a) * t;
}
double DegreesToRadians(double degrees);
/// Turned counterclockwise about the origin.
CSpot Turned(CSpot spot, double degrees);

/// A polyline so fine that it looks like a curve. A closed one has no second copy of its first point.
using CCurve = std::vector<CSpot>;

/// Where a part of a drawing stands: scaled, turned, then moved.
struct CPlacement {
    CSpot origin;
    double degrees = 0;
    CSpot scale{1, 1};

    CSpot Of(CSpot spot) const { return origin + Turned({spot.x * scale.x, spot.y * scale.y}, degrees); }
    CCurve Of(CCurve curve) const;
};

CCurve Ellipse(CSpot centre, double radiusX, double radiusY, double degrees = 0);
/// The part of an ellipse from one angle to the other.
CCurve Arc(CSpot centre, double radiusX, double radiusY, double fromDegrees, double toDegrees);
/// Smooth curves through points (Catmull and Rom's splines). A point given twice in a row makes a corner.
CCurve ClosedCurve(const std::vector<CSpot>& points);
CCurve OpenCurve(const std::vector<CSpot>& points);
/// The quadratic Bezier curve from one point to another, drawn towards `pull`.
CCurve Bow(CSpot from, CSpot pull, CSpot to);
CCurve Reversed(CCurve curve);
/// `curve` followed by `next`.
CCurve Joined(CCurve curve, const CCurve& next);

/// Half the width of a tube, at a share (0 to 1) of its length.
struct CGirth {
    double share = 0;
    double radius = 0;
};

/// The outline of a tube around an open curve, rounded at both ends. Between the girths, which ascend from share 0
/// to share 1, its width changes smoothly.
CCurve Tube(const CCurve& spine, const std::vector<CGirth>& girths);
/// A tube of one width.
CCurve Tube(const CCurve& spine, double radius);

} // namespace velmor::demo
