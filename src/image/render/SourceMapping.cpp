#include "image/render/SourceMapping.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace velmor {

namespace {

constexpr int mostEstimableColumns = 1 << 15;
constexpr double mostEstimable = 0x1p20;

/// A whole number of pixels.
constexpr int MiddleOf(int length) {
    return length / 2;
}

/// Largest term that occurs in one coordinate: everything that the roundings of a coordinate are relative to.
double LargestTerm(double reachAlong, double along, double reachAcross, double across, double scale, double half) {
    return (reachAlong * std::abs(along) + reachAcross * std::abs(across)) / std::abs(scale) + half;
}

/// One coordinate along a row, by its straight line.
struct CLine {
    double start;
    double step;

    double At(int column) const { return start + step * column; }
};

/// The first column from which on a coordinate is past `bound`, in the direction in which it runs; `columns` when
/// there is none. `isPast` is the exact test, asked where the line leaves a doubt or cannot be trusted.
template<class Test>
int FirstColumnPast(const CLine& line, double bound, int columns, bool isEstimable, const Test& isPast) {
    if (isEstimable) {
        constexpr double clear = 2 * CSourceMapping::estimateError;
        const double direction = line.step < 0 ? -1 : 1;
        const auto past = [&](int column) { return direction * (line.At(column) - bound); };
        if (past(0) > clear)
            return 0;
        if (past(columns - 1) < -clear)
            return columns;
        const double crossing = std::ceil((bound - line.start) / line.step);
        if (crossing >= 1 && crossing < columns) {
            const int column = static_cast<int>(crossing);
            if (past(column) > clear && past(column - 1) < -clear)
                return column;
        }
    }
    int first = 0;
    for (int end = columns; first < end;) {
        const int middle = first + (end - first) / 2;
        if (isPast(middle))
            end = middle;
        else
            first = middle + 1;
    }
    return first;
}

/// The columns where least <= coordinate < limit. `coordinate` is the exact one.
template<class Coordinate>
CColumnSpan ColumnsWithin(const CLine& line, double least, double limit, int columns, bool isEstimable,
                          const Coordinate& coordinate) {
    const auto isFromLeast = [&](int column) { return coordinate(column) >= least; };
    const auto isBelowLimit = [&](int column) { return coordinate(column) < limit; };
    if (line.step < 0)
        return {FirstColumnPast(line, limit, columns, isEstimable, isBelowLimit),
                FirstColumnPast(line, least, columns, isEstimable, std::not_fn(isFromLeast))};
    return {FirstColumnPast(line, least, columns, isEstimable, isFromLeast),
            FirstColumnPast(line, limit, columns, isEstimable, std::not_fn(isBelowLimit))};
}

} // namespace

CSourceMapping::CSourceMapping(const CPlacement& placement, CSize image, CSize destination)
    : m_centreX(placement.centreX),
      m_centreY(placement.centreY),
      m_scaleX(placement.scaleX),
      m_scaleY(placement.scaleY),
      m_halfWidth(MiddleOf(image.width)),
      m_halfHeight(MiddleOf(image.height)),
      m_isRotated(placement.angle != 0),
      m_columns(destination.width) {
    if (m_isRotated) {
        m_cosine = std::cos(placement.angle);
        m_sine = std::sin(placement.angle);
    }
    m_stepX = m_cosine / m_scaleX;
    m_stepY = m_sine / m_scaleY;
    const double reachX = std::abs(m_centreX) + destination.width;
    const double reachY = std::abs(m_centreY) + destination.height;
    const double largestX = LargestTerm(reachX, m_cosine, reachY, m_sine, m_scaleX, m_halfWidth);
    const double largestY = LargestTerm(reachX, m_sine, reachY, m_cosine, m_scaleY, m_halfHeight);
    // Written so that what is not a number is not estimable.
    m_isEstimable = m_columns <= mostEstimableColumns && largestX < mostEstimable && largestY < mostEstimable;
}

CColumnSpan CSourceMapping::ColumnsInside(int row, const CRect& area) const {
    if (m_columns <= 0)
        return {};
    const CSourcePoint start = PointOf(0, row);
    const CColumnSpan inX = ColumnsWithin(CLine{start.x, m_stepX}, area.x, area.endX, m_columns, m_isEstimable,
                                          [&](int column) { return PointOf(column, row).x; });
    if (inX.IsEmpty())
        return {};
    const CColumnSpan inY = ColumnsWithin(CLine{start.y, m_stepY}, area.y, area.endY, m_columns, m_isEstimable,
                                          [&](int column) { return PointOf(column, row).y; });
    return {std::max(inX.begin, inY.begin), std::min(inX.end, inY.end)};
}

} // namespace velmor
