#include "image/stroke/SmoothWay.h"

#include <algorithm>
#include <optional>

namespace velmor {

namespace {

constexpr double sameSpot = 1.0 / 64;
constexpr double mostPieces = 4096;

// The tangent at `at` for the piece of a curve that has the knots `scale` apart, `before` and `after` being the
// knots' distances to the neighbours.
CRealPoint Tangent(CRealPoint previous, CRealPoint at, CRealPoint next, double before, double after, double scale) {
    const auto along = [&](double a, double b, double c) {
        return ((b - a) / before - (c - a) / (before + after) + (c - b) / after) * scale;
    };
    return {along(previous.x, at.x, next.x), along(previous.y, at.y, next.y)};
}

// At an end: as a curve that is not bent there has it.
CRealPoint EndTangent(CRealPoint from, CRealPoint to, CRealPoint other) {
    return {1.5 * (to.x - from.x) - 0.5 * other.x, 1.5 * (to.y - from.y) - 0.5 * other.y};
}

double KnotDistance(CRealPoint a, CRealPoint b) {
    return std::sqrt(Distance(a, b));
}

CRealPoint Hermite(CRealPoint from, CRealPoint leaving, CRealPoint to, CRealPoint arriving, double t) {
    const double toShare = t * t * (3 - 2 * t);
    const double leavingShare = t * (1 - t) * (1 - t);
    const double arrivingShare = t * t * (t - 1);
    const auto along = [&](double a, double m, double b, double n) {
        return a + (b - a) * toShare + m * leavingShare + n * arrivingShare;
    };
    return {along(from.x, leaving.x, to.x, arriving.x), along(from.y, leaving.y, to.y, arriving.y)};
}

// The piece between two points; null neighbours are beyond the curve's ends.
std::vector<CStrokePoint> Piece(const CStrokePoint* previous, const CStrokePoint& from, const CStrokePoint& to,
                                const CStrokePoint* next) {
    const double scale = KnotDistance(from.at, to.at);
    std::optional<CRealPoint> leaving;
    std::optional<CRealPoint> arriving;
    if (previous != nullptr)
        leaving = Tangent(previous->at, from.at, to.at, KnotDistance(previous->at, from.at), scale, scale);
    if (next != nullptr)
        arriving = Tangent(from.at, to.at, next->at, scale, KnotDistance(to.at, next->at), scale);
    if (!leaving && !arriving)
        leaving = arriving = CRealPoint{to.at.x - from.at.x, to.at.y - from.at.y};
    else if (!leaving)
        leaving = EndTangent(from.at, to.at, *arriving);
    else if (!arriving)
        arriving = EndTangent(from.at, to.at, *leaving);
    const double pieces = std::clamp(std::ceil(Distance(from.at, to.at)), 1.0, mostPieces);
    std::vector<CStrokePoint> curve;
    curve.reserve(static_cast<std::size_t>(pieces));
    for (int i = 1; i < static_cast<int>(pieces); ++i)
        curve.push_back({Hermite(from.at, *leaving, to.at, *arriving, i / pieces),
                         from.pressure + (to.pressure - from.pressure) * i / pieces});
    curve.push_back(to);
    return curve;
}

} // namespace

std::vector<CStrokePoint> CSmoothWay::Move(const CStrokePoint& to) {
    if (m_points.empty()) {
        m_points.push_back(to);
        return {to};
    }
    if (Distance(m_points.back().at, to.at) < sameSpot) {
        m_points.back().pressure = std::max(m_points.back().pressure, to.pressure);
        return {};
    }
    m_points.push_back(to);
    const std::size_t count = m_points.size();
    if (count < 3)
        return {};
    std::vector<CStrokePoint> curve =
        Piece(count > 3 ? &m_points[0] : nullptr, m_points[count - 3], m_points[count - 2], &m_points[count - 1]);
    if (count > 3)
        m_points.erase(m_points.begin());
    return curve;
}

std::vector<CStrokePoint> CSmoothWay::End() {
    const std::size_t count = m_points.size();
    if (count < 2)
        return m_points;
    return Piece(count > 2 ? &m_points[0] : nullptr, m_points[count - 2], m_points[count - 1], nullptr);
}

} // namespace velmor
