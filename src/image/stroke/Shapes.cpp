#include "image/stroke/Shapes.h"

#include "image/stroke/StrokePoint.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace velmor {

namespace {

constexpr double step = std::numbers::pi / 12;
constexpr double mostPoints = 1 << 16;

// Points enough that neighbours are half a pixel apart on a way of that length.
int PointsOn(double length) {
    return static_cast<int>(std::clamp(std::ceil(2 * length), 8.0, mostPoints));
}

// Two opposite corners.
std::pair<CRealPoint, CRealPoint> Corners(CRealPoint press, CRealPoint release, CShapeHold hold) {
    double dx = release.x - press.x;
    double dy = release.y - press.y;
    if (hold.isEven) {
        const double side = std::max(std::abs(dx), std::abs(dy));
        dx = std::copysign(side, dx);
        dy = std::copysign(side, dy);
    }
    const CRealPoint from = hold.fromCentre ? CRealPoint{press.x - dx, press.y - dy} : press;
    return {from, {press.x + dx, press.y + dy}};
}

} // namespace

CRealPoint AlongSteps(CRealPoint from, CRealPoint to) {
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    const double angle = std::round(std::atan2(dy, dx) / step) * step;
    const double length = dx * std::cos(angle) + dy * std::sin(angle);
    return {from.x + length * std::cos(angle), from.y + length * std::sin(angle)};
}

std::vector<CRealPoint> LineShape(CRealPoint press, CRealPoint release, CShapeHold hold) {
    const CRealPoint end = hold.isEven ? AlongSteps(press, release) : release;
    const CRealPoint begin = hold.fromCentre ? CRealPoint{2 * press.x - end.x, 2 * press.y - end.y} : press;
    return {begin, end};
}

std::vector<CRealPoint> RectangleShape(CRealPoint press, CRealPoint release, CShapeHold hold) {
    const auto [a, b] = Corners(press, release, hold);
    return {a, {b.x, a.y}, b, {a.x, b.y}, a};
}

std::vector<CRealPoint> EllipseShape(CRealPoint press, CRealPoint release, CShapeHold hold) {
    const auto [a, b] = Corners(press, release, hold);
    const CRealPoint centre = Between(a, b, 0.5);
    const double radiusX = std::abs(b.x - a.x) / 2;
    const double radiusY = std::abs(b.y - a.y) / 2;
    const int count = PointsOn(2 * std::numbers::pi * std::max(radiusX, radiusY));
    std::vector<CRealPoint> points;
    points.reserve(static_cast<std::size_t>(count) + 1);
    for (int i = 0; i < count; ++i) {
        const double angle = 2 * std::numbers::pi * i / count;
        points.push_back({centre.x + radiusX * std::cos(angle), centre.y + radiusY * std::sin(angle)});
    }
    points.push_back(points.front());
    return points;
}

std::vector<CRealPoint> CurveShape(CRealPoint begin, CRealPoint end, CRealPoint bend) {
    const CRealPoint handle{2 * bend.x - (begin.x + end.x) / 2, 2 * bend.y - (begin.y + end.y) / 2};
    const int count = PointsOn(Distance(begin, handle) + Distance(handle, end));
    std::vector<CRealPoint> points;
    points.reserve(static_cast<std::size_t>(count) + 1);
    for (int i = 0; i <= count; ++i) {
        const double share = static_cast<double>(i) / count;
        points.push_back(Between(Between(begin, handle, share), Between(handle, end, share), share));
    }
    return points;
}

} // namespace velmor
