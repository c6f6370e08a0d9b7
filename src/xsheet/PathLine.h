#pragma once

#include "image/RealPoint.h"

#include <cstddef>
#include <span>
#include <vector>

namespace velmor {

/// A smooth line through points, measured by its length: what moves along it. It has no corners of its own and
/// makes no loops, however unevenly the points lie; points on a straight line give that line.
class CPathLine {
public:
    /// At least one point.
    explicit CPathLine(std::span<const CRealPoint> points);

    double Length() const { return m_lengths.back(); }
    /// The point that far from the beginning, 0 to Length(); beyond, the nearer end.
    CRealPoint At(double length) const;
    /// How far along the line the point of it lies that is nearest to this one.
    double Nearest(CRealPoint point) const;
    /// How far along the line the point of that number lies.
    double LengthTo(std::size_t point) const;

private:
    std::vector<CRealPoint> m_line; ///< in short straight pieces
    std::vector<double> m_lengths;  ///< to each of their ends
};

/// A line as a hand has drawn it, freed of its tremor: points of about the same distance, the first and the last
/// one where they were. Empty for no points.
std::vector<CRealPoint> Smoothed(std::span<const CRealPoint> drawn);

} // namespace velmor
