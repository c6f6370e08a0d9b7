#include "app/demo/Region.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace velmor::demo {

namespace {

/// Where the curve crosses a horizontal line, and whether upwards (+1) or downwards (-1).
struct CCrossing {
    double x = 0;
    int way = 0;
};

std::vector<CCrossing> CrossingsAt(const CCurve& closed, double y) {
    std::vector<CCrossing> crossings;
    for (std::size_t i = 0; i < closed.size(); ++i) {
        const CSpot a = closed[i];
        const CSpot b = closed[(i + 1) % closed.size()];
        if ((a.y <= y) != (b.y <= y))
            crossings.push_back({a.x + (b.x - a.x) * (y - a.y) / (b.y - a.y), a.y <= y ? 1 : -1});
    }
    std::sort(crossings.begin(), crossings.end(), [](const CCrossing& a, const CCrossing& b) { return a.x < b.x; });
    return crossings;
}

CSpot NearestOnSegment(CSpot a, CSpot b, CSpot spot) {
    const CSpot along = b - a;
    const double square = along.x * along.x + along.y * along.y;
    if (square == 0)
        return a;
    const CSpot offset = spot - a;
    return a + along * std::clamp((offset.x * along.x + offset.y * along.y) / square, 0.0, 1.0);
}

struct CExtent {
    CSpot least{std::numeric_limits<double>::max(), std::numeric_limits<double>::max()};
    CSpot most{std::numeric_limits<double>::lowest(), std::numeric_limits<double>::lowest()};
};

CExtent ExtentOf(const CCurve& curve) {
    CExtent extent;
    for (const CSpot& spot : curve) {
        extent.least = {std::min(extent.least.x, spot.x), std::min(extent.least.y, spot.y)};
        extent.most = {std::max(extent.most.x, spot.x), std::max(extent.most.y, spot.y)};
    }
    return extent;
}

} // namespace

std::vector<CRun> RunsInside(const CCurve& closed) {
    const CExtent extent = ExtentOf(closed);
    std::vector<CRun> runs;
    for (int row = static_cast<int>(std::floor(extent.least.y)); row <= extent.most.y; ++row) {
        int winding = 0;
        double start = 0;
        for (const CCrossing& crossing : CrossingsAt(closed, row)) {
            if (winding == 0)
                start = crossing.x;
            winding += crossing.way;
            const CRun run{static_cast<int>(std::ceil(start)), static_cast<int>(std::ceil(crossing.x)), row};
            if (winding == 0 && run.x < run.endX)
                runs.push_back(run);
        }
    }
    return runs;
}

bool IsInside(const CCurve& closed, CSpot spot) {
    int winding = 0;
    for (const CCrossing& crossing : CrossingsAt(closed, spot.y))
        if (crossing.x < spot.x)
            winding += crossing.way;
    return winding != 0;
}

CSpot NearestOn(const CCurve& closed, CSpot spot) {
    CSpot nearest = closed.front();
    for (std::size_t i = 0; i < closed.size(); ++i) {
        const CSpot candidate = NearestOnSegment(closed[i], closed[(i + 1) % closed.size()], spot);
        if (LengthOf(candidate - spot) < LengthOf(nearest - spot))
            nearest = candidate;
    }
    return nearest;
}

double Clearance(const CCurve& closed, CSpot spot) {
    return LengthOf(NearestOn(closed, spot) - spot);
}

CSpot Heart(const CCurve& closed) {
    constexpr int gridSteps = 24;
    const CExtent extent = ExtentOf(closed);
    CSpot heart = closed.front();
    double best = 0;
    for (int row = 1; row < gridSteps; ++row)
        for (int column = 1; column < gridSteps; ++column) {
            const CSpot spot{std::lerp(extent.least.x, extent.most.x, static_cast<double>(column) / gridSteps),
                             std::lerp(extent.least.y, extent.most.y, static_cast<double>(row) / gridSteps)};
            if (const double clearance = Clearance(closed, spot); clearance > best && IsInside(closed, spot)) {
                best = clearance;
                heart = spot;
            }
        }
    return heart;
}

CCurve HeldInside(CCurve curve, const CCurve& closed) {
    for (CSpot& spot : curve)
        if (!IsInside(closed, spot))
            spot = NearestOn(closed, spot);
    return curve;
}

} // namespace velmor::demo
