#include "image/clean/PageTurn.h"

#include "image/clean/DarkGrid.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>
#include <vector>

namespace velmor {

namespace {

constexpr double mostDegrees = 10;
constexpr double stepDegrees = 0.1;
constexpr double bandPixels = 3; // in which the points of an edge lie at the nearest step
constexpr double leastPart = 1.0 / 3;
constexpr std::size_t mostPoints = 200'000;
constexpr double radiansPerDegree = std::numbers::pi / 180;

/// A place on an edge: along the direction that is looked in, and across.
struct CEdgePoint {
    double along;
    double across;
};

/// An edge as across = start + slope * along, and how many points lie on it.
struct CEdge {
    double slope = 0;
    double start = 0;
    double points = 0;
};

/// The upper sides of what is dark, or its right sides.
std::vector<CEdgePoint> EdgePoints(const CDarkGrid& page, bool upright) {
    std::vector<CEdgePoint> points;
    const CSize size = page.Size();
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x) {
            if (!page.IsDark(x, y))
                continue;
            const bool isEdge = upright ? x + 1 < size.width && !page.IsDark(x + 1, y)
                                        : y + 1 < size.height && !page.IsDark(x, y + 1);
            if (isEdge)
                points.push_back(upright ? CEdgePoint{double(y), double(x)} : CEdgePoint{double(x), double(y)});
        }
    return points;
}

/// Edges of one direction that are looked at together.
class CBands {
public:
    CBands(const CDarkGrid& page, bool upright)
        : m_points(EdgePoints(page, upright)),
          m_length(upright ? page.Size().height : page.Size().width),
          m_breadth(upright ? page.Size().width : page.Size().height) {}

    std::span<const CEdgePoint> Points() const { return m_points; }
    double Length() const { return m_length; }

    /// The band with the most points of those that rise by `slope`; their number as a part of the page's length.
    CEdge Fullest(double slope) {
        const double margin = m_length * std::abs(slope) + bandPixels;
        const std::size_t stride = m_points.size() / mostPoints + 1;
        m_counts.assign(static_cast<std::size_t>((m_breadth + 2 * margin) / bandPixels) + 2, 0);
        for (std::size_t i = 0; i < m_points.size(); i += stride)
            ++m_counts[static_cast<std::size_t>((m_points[i].across - slope * m_points[i].along + margin) /
                                                bandPixels)];
        const auto most = std::ranges::max_element(m_counts);
        const double middle = (static_cast<double>(most - m_counts.begin()) + 0.5) * bandPixels - margin;
        return {slope, middle, static_cast<double>(*most) * static_cast<double>(stride) / m_length};
    }

private:
    std::vector<CEdgePoint> m_points;
    double m_length;
    double m_breadth;
    std::vector<int> m_counts; ///< of the points in each band
};

/// Counts only if it is long enough.
double LengthOf(const CEdge& edge) {
    return edge.points < leastPart ? 0 : edge.points;
}

double WeightAt(double off, double reach) {
    const double part = off / reach;
    return std::abs(part) < 1 ? (1 - part * part) * (1 - part * part) : 0;
}

/// The straight line through the points near an edge; those further away count for less, then for nothing.
CEdge Fitted(std::span<const CEdgePoint> points, CEdge edge) {
    for (const double reach : {6.0, 4.0, 3.0, 2.0, 1.5, 1.5}) {
        double n = 0, x = 0, y = 0, xx = 0, xy = 0;
        edge.points = 0;
        for (const CEdgePoint& at : points) {
            const double off = at.across - edge.start - edge.slope * at.along;
            const double weight = WeightAt(off, reach);
            n += weight;
            x += weight * at.along;
            y += weight * at.across;
            xx += weight * at.along * at.along;
            xy += weight * at.along * at.across;
            edge.points += std::abs(off) < 1 ? 1 : 0;
        }
        const double spread = n * xx - x * x;
        if (!(n > 2) || !(spread > 0))
            return {};
        edge.slope = (n * xy - x * y) / spread;
        edge.start = (y - edge.slope * x) / n;
    }
    return edge;
}

CEdge Exactly(const CBands& bands, const CEdge& band) {
    if (LengthOf(band) == 0)
        return {};
    CEdge edge = Fitted(bands.Points(), band);
    edge.points /= bands.Length();
    return LengthOf(edge) == 0 ? CEdge{} : edge;
}

} // namespace

std::optional<double> FindPageTurn(const CCelImg& page, int threshold) {
    if (page.GetLoadState() == LoadState::Nothing)
        return std::nullopt;
    const CDarkGrid grid(page, threshold);
    CBands levelBands(grid, false), uprightBands(grid, true);
    CEdge level, upright;
    // What is square to one another counts together: a frame outweighs a longer line that lies askew.
    for (double degrees = -mostDegrees; degrees <= mostDegrees; degrees += stepDegrees) {
        const double slope = std::tan(degrees * radiansPerDegree);
        const CEdge row = levelBands.Fullest(slope), column = uprightBands.Fullest(-slope);
        if (LengthOf(row) + LengthOf(column) > LengthOf(level) + LengthOf(upright)) {
            level = row;
            upright = column;
        }
    }
    level = Exactly(levelBands, level);
    upright = Exactly(uprightBands, upright);
    const double points = level.points + upright.points;
    if (points == 0)
        return std::nullopt;
    return (level.points * std::atan(level.slope) - upright.points * std::atan(upright.slope)) / points /
           radiansPerDegree;
}

} // namespace velmor
