#include "image/stroke/RoundTip.h"

#include "image/stroke/StrokePoint.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace velmor {

namespace {

constexpr double leastRadius = 0.5;
constexpr double far = 1 << 24; ///< from any image, and still exact

struct CDisc {
    CRealPoint centre;
    double radius;
};

CDisc DiscOf(const CTipPlace& place) {
    return {{std::clamp(place.at.x, -far, far), std::clamp(place.at.y, -far, far)},
            std::clamp(place.radius, leastRadius, far)};
}

/// The part of a row that a convex shape covers, grown point by point.
struct CReach {
    double least = std::numeric_limits<double>::infinity();
    double most = -std::numeric_limits<double>::infinity();

    void Add(double x) {
        least = std::min(least, x);
        most = std::max(most, x);
    }
    void Add(const CDisc& disc, double y) {
        const double above = y - disc.centre.y;
        if (std::abs(above) > disc.radius)
            return;
        const double half = std::sqrt(disc.radius * disc.radius - above * above);
        Add(disc.centre.x - half);
        Add(disc.centre.x + half);
    }
};

/// The two lines that touch both of two discs from outside.
class CTangents {
public:
    CTangents(const CDisc& from, const CDisc& to) {
        const double length = Distance(from.centre, to.centre);
        m_exist = length > std::abs(from.radius - to.radius);
        if (!m_exist)
            return; // one disc holds the other
        const double dx = (to.centre.x - from.centre.x) / length;
        const double dy = (to.centre.y - from.centre.y) / length;
        const double along = (from.radius - to.radius) / length;
        const double across = std::sqrt(1 - along * along);
        const auto touch = [&](const CDisc& disc, double side) {
            return CRealPoint{disc.centre.x + disc.radius * (along * dx - side * across * dy),
                              disc.centre.y + disc.radius * (along * dy + side * across * dx)};
        };
        m_lines = {{{touch(from, 1), touch(to, 1)}, {touch(from, -1), touch(to, -1)}}};
    }

    void AddTo(CReach& reach, double y) const {
        if (!m_exist)
            return;
        for (const auto& [a, b] : m_lines)
            if (a.y != b.y && (a.y - y) * (b.y - y) <= 0)
                reach.Add(a.x + (b.x - a.x) * (y - a.y) / (b.y - a.y));
    }

private:
    bool m_exist = false;
    std::array<std::pair<CRealPoint, CRealPoint>, 2> m_lines;
};

int Floor(double value) {
    return static_cast<int>(std::floor(value));
}

} // namespace

CRect SweepBounds(const CTipPlace& from, const CTipPlace& to) {
    const CDisc a = DiscOf(from);
    const CDisc b = DiscOf(to);
    return {Floor(std::min(a.centre.x - a.radius, b.centre.x - b.radius)),
            Floor(std::min(a.centre.y - a.radius, b.centre.y - b.radius)),
            Floor(std::max(a.centre.x + a.radius, b.centre.x + b.radius)) + 1,
            Floor(std::max(a.centre.y + a.radius, b.centre.y + b.radius)) + 1};
}

void SweepRows(const CTipPlace& from, const CTipPlace& to, CSize size,
               const std::function<void(int y, int x, int endX)>& visit) {
    const CDisc first = DiscOf(from);
    const CDisc last = DiscOf(to);
    const CTangents tangents(first, last);
    const CRect bounds = SweepBounds(from, to);
    for (int y = std::max(bounds.y, 0); y < std::min(bounds.endY, size.height); ++y) {
        const double middle = y + 0.5;
        CReach reach;
        reach.Add(first, middle);
        reach.Add(last, middle);
        tangents.AddTo(reach, middle);
        if (from.at == to.at && y == Floor(first.centre.y))
            reach.Add(Floor(first.centre.x) + 0.5);
        if (reach.least > reach.most)
            continue;
        const int x = std::max(Floor(std::ceil(reach.least - 0.5)), 0);
        const int endX = std::min(Floor(reach.most - 0.5) + 1, size.width);
        if (x < endX)
            visit(y, x, endX);
    }
}

} // namespace velmor
