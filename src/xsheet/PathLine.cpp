#include "xsheet/PathLine.h"

#include <algorithm>
#include <cmath>

namespace velmor {

namespace {

constexpr std::size_t pieces = 16;     ///< between two points
constexpr double smoothedDistance = 4; ///< of the points of a smoothed line
constexpr int smoothings = 3;

double Distance(CRealPoint a, CRealPoint b) {
    return std::hypot(b.x - a.x, b.y - a.y);
}

CRealPoint Between(CRealPoint a, CRealPoint b, double part) {
    return {a.x + (b.x - a.x) * part, a.y + (b.y - a.y) * part};
}

CRealPoint Mirrored(CRealPoint point, CRealPoint about) {
    return {2 * about.x - point.x, 2 * about.y - point.y};
}

// The point before the piece that begins at `at`, on another spot; one as far off as the end where there is none.
CRealPoint Before(std::span<const CRealPoint> points, std::size_t at) {
    for (std::size_t i = at; i-- > 0;)
        if (points[i] != points[at])
            return points[i];
    return Mirrored(points[at + 1], points[at]);
}

CRealPoint After(std::span<const CRealPoint> points, std::size_t at) {
    for (std::size_t i = at + 2; i < points.size(); ++i)
        if (points[i] != points[at + 1])
            return points[i];
    return Mirrored(points[at], points[at + 1]);
}

// One coordinate of a centripetal Catmull-Rom piece from b to c; the roots are those of the three distances.
double Coordinate(double a, double b, double c, double d, const double (&roots)[3], double t) {
    const double out = roots[1] * ((b - a) / roots[0] - (c - a) / (roots[0] + roots[1]) + (c - b) / roots[1]);
    const double in = roots[1] * ((c - b) / roots[1] - (d - b) / (roots[1] + roots[2]) + (d - c) / roots[2]);
    const double square = t * t;
    const double cube = square * t;
    return (2 * cube - 3 * square + 1) * b + (cube - 2 * square + t) * out + (3 * square - 2 * cube) * c +
           (cube - square) * in;
}

CRealPoint OnPiece(std::span<const CRealPoint> points, std::size_t at, double t) {
    const CRealPoint b = points[at];
    const CRealPoint c = points[at + 1];
    if (b == c)
        return b;
    const CRealPoint a = Before(points, at);
    const CRealPoint d = After(points, at);
    const double roots[3] = {std::sqrt(Distance(a, b)), std::sqrt(Distance(b, c)), std::sqrt(Distance(c, d))};
    return {Coordinate(a.x, b.x, c.x, d.x, roots, t), Coordinate(a.y, b.y, c.y, d.y, roots, t)};
}

} // namespace

CPathLine::CPathLine(std::span<const CRealPoint> points) {
    m_line.reserve((points.size() - 1) * pieces + 1);
    m_line.push_back(points.front());
    for (std::size_t at = 0; at + 1 < points.size(); ++at) {
        for (std::size_t i = 1; i < pieces; ++i)
            m_line.push_back(OnPiece(points, at, static_cast<double>(i) / pieces));
        m_line.push_back(points[at + 1]);
    }
    m_lengths.reserve(m_line.size());
    m_lengths.push_back(0);
    for (std::size_t i = 1; i < m_line.size(); ++i)
        m_lengths.push_back(m_lengths.back() + Distance(m_line[i - 1], m_line[i]));
}

CRealPoint CPathLine::At(double length) const {
    const auto end = std::ranges::lower_bound(m_lengths, length);
    if (end == m_lengths.begin())
        return m_line.front();
    if (end == m_lengths.end())
        return m_line.back();
    const auto i = static_cast<std::size_t>(end - m_lengths.begin());
    return Between(m_line[i - 1], m_line[i], (length - m_lengths[i - 1]) / (m_lengths[i] - m_lengths[i - 1]));
}

double CPathLine::Nearest(CRealPoint point) const {
    double nearest = 0;
    double least = Distance(point, m_line.front());
    for (std::size_t i = 1; i < m_line.size(); ++i) {
        const CRealPoint along{m_line[i].x - m_line[i - 1].x, m_line[i].y - m_line[i - 1].y};
        const double square = along.x * along.x + along.y * along.y;
        if (square == 0)
            continue;
        const double part = std::clamp(
            ((point.x - m_line[i - 1].x) * along.x + (point.y - m_line[i - 1].y) * along.y) / square, 0.0, 1.0);
        const double away = Distance(point, Between(m_line[i - 1], m_line[i], part));
        if (away < least) {
            least = away;
            nearest = m_lengths[i - 1] + part * (m_lengths[i] - m_lengths[i - 1]);
        }
    }
    return nearest;
}

double CPathLine::LengthTo(std::size_t point) const {
    return m_lengths[point * pieces];
}

std::vector<CRealPoint> Smoothed(std::span<const CRealPoint> drawn) {
    if (drawn.empty())
        return {};
    const CPathLine line(drawn);
    const int count = std::max(1, static_cast<int>(std::lround(line.Length() / smoothedDistance)));
    std::vector<CRealPoint> points;
    for (int i = 0; i <= count; ++i)
        points.push_back(line.At(line.Length() * i / count));
    for (int pass = 0; pass < smoothings; ++pass) {
        const std::vector<CRealPoint> before = points;
        for (std::size_t i = 1; i + 1 < points.size(); ++i)
            points[i] = {(before[i - 1].x + 2 * before[i].x + before[i + 1].x) / 4,
                         (before[i - 1].y + 2 * before[i].y + before[i + 1].y) / 4};
    }
    return points;
}

} // namespace velmor
