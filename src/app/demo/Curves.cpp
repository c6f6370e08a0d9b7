#include "app/demo/Curves.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace velmor::demo {

namespace {

constexpr int stepsPerTurn = 72;
constexpr int stepsPerSpan = 12; ///< of a spline, from one point to the next

CSpot SplineAt(CSpot before, CSpot from, CSpot to, CSpot after, double t) {
    const CSpot linear = (to - before) * 0.5;
    const CSpot square = before - from * 2.5 + to * 2 - after * 0.5;
    const CSpot cube = (after - before) * 0.5 + (from - to) * 1.5;
    return from + linear * t + square * (t * t) + cube * (t * t * t);
}

bool AreSame(CSpot a, CSpot b) {
    return a.x == b.x && a.y == b.y;
}

void AppendSpan(CCurve& curve, CSpot before, CSpot from, CSpot to, CSpot after) {
    if (AreSame(from, to))
        return;
    for (int i = 0; i < stepsPerSpan; ++i)
        curve.push_back(SplineAt(before, from, to, after, static_cast<double>(i) / stepsPerSpan));
}

/// Unit direction of the spine at a point, from its neighbours.
CSpot DirectionAt(const CCurve& spine, std::size_t i) {
    const CSpot along = spine[std::min(i + 1, spine.size() - 1)] - spine[i == 0 ? 0 : i - 1];
    const double length = LengthOf(along);
    return length > 0 ? along * (1 / length) : CSpot{1, 0};
}

double RadiusAt(const std::vector<CGirth>& girths, double share) {
    std::size_t i = 1;
    while (i + 1 < girths.size() && girths[i].share < share)
        ++i;
    const CGirth& from = girths[i - 1];
    const CGirth& to = girths[i];
    const double t = std::clamp((share - from.share) / (to.share - from.share), 0.0, 1.0);
    return std::lerp(from.radius, to.radius, t * t * (3 - 2 * t));
}

/// The half circle around the end of a tube, from its right side (seen along `direction`) to its left.
void AppendCap(CCurve& outline, CSpot centre, CSpot direction, double radius) {
    const CSpot right{direction.y, -direction.x};
    constexpr int steps = stepsPerTurn / 2;
    for (int i = 1; i < steps; ++i)
        outline.push_back(centre + Turned(right * radius, 180.0 * i / steps));
}

} // namespace

double LengthOf(CSpot spot) {
    return std::hypot(spot.x, spot.y);
}

double DegreesToRadians(double degrees) {
    return degrees / 180 * std::numbers::pi;
}

CSpot Turned(CSpot spot, double degrees) {
    const double angle = DegreesToRadians(degrees);
    return {spot.x * std::cos(angle) - spot.y * std::sin(angle),
            spot.x * std::sin(angle) + spot.y * std::cos(angle)};
}

CCurve CPlacement::Of(CCurve curve) const {
    for (CSpot& spot : curve)
        spot = Of(spot);
    return curve;
}

CCurve Ellipse(CSpot centre, double radiusX, double radiusY, double degrees) {
    CCurve curve = Arc({}, radiusX, radiusY, 0, 360);
    curve.pop_back();
    return CPlacement{centre, degrees}.Of(std::move(curve));
}

CCurve Arc(CSpot centre, double radiusX, double radiusY, double fromDegrees, double toDegrees) {
    const int steps = std::max(2, static_cast<int>(std::abs(toDegrees - fromDegrees) * stepsPerTurn / 360));
    CCurve curve;
    for (int i = 0; i <= steps; ++i) {
        const double angle = DegreesToRadians(std::lerp(fromDegrees, toDegrees, static_cast<double>(i) / steps));
        curve.push_back(centre + CSpot{radiusX * std::cos(angle), radiusY * std::sin(angle)});
    }
    return curve;
}

CCurve ClosedCurve(const std::vector<CSpot>& points) {
    const std::size_t count = points.size();
    CCurve curve;
    for (std::size_t i = 0; i < count; ++i)
        AppendSpan(curve, points[(i + count - 1) % count], points[i], points[(i + 1) % count],
                   points[(i + 2) % count]);
    return curve;
}

CCurve OpenCurve(const std::vector<CSpot>& points) {
    CCurve curve;
    const std::size_t last = points.size() - 1;
    for (std::size_t i = 0; i < last; ++i)
        AppendSpan(curve, points[i == 0 ? 0 : i - 1], points[i], points[i + 1], points[std::min(i + 2, last)]);
    curve.push_back(points[last]);
    return curve;
}

CCurve Bow(CSpot from, CSpot pull, CSpot to) {
    constexpr int steps = 2 * stepsPerSpan;
    CCurve curve;
    for (int i = 0; i <= steps; ++i) {
        const double t = static_cast<double>(i) / steps;
        curve.push_back(Between(Between(from, pull, t), Between(pull, to, t), t));
    }
    return curve;
}

CCurve Reversed(CCurve curve) {
    std::reverse(curve.begin(), curve.end());
    return curve;
}

CCurve Joined(CCurve curve, const CCurve& next) {
    curve.insert(curve.end(), next.begin(), next.end());
    return curve;
}

CCurve Tube(const CCurve& spine, const std::vector<CGirth>& girths) {
    std::vector<double> shares{0};
    for (std::size_t i = 1; i < spine.size(); ++i)
        shares.push_back(shares.back() + LengthOf(spine[i] - spine[i - 1]));
    const double length = std::max(shares.back(), 1e-9);

    CCurve right;
    CCurve left;
    for (std::size_t i = 0; i < spine.size(); ++i) {
        const CSpot direction = DirectionAt(spine, i);
        const CSpot side = CSpot{-direction.y, direction.x} * RadiusAt(girths, shares[i] / length);
        right.push_back(spine[i] - side);
        left.push_back(spine[i] + side);
    }
    CCurve outline = std::move(right);
    AppendCap(outline, spine.back(), DirectionAt(spine, spine.size() - 1), girths.back().radius);
    outline = Joined(std::move(outline), Reversed(std::move(left)));
    AppendCap(outline, spine.front(), DirectionAt(spine, 0) * -1, girths.front().radius);
    return outline;
}

CCurve Tube(const CCurve& spine, double radius) {
    return Tube(spine, {{0, radius}, {1, radius}});
}

} // namespace velmor::demo
