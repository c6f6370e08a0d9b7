#include "image/stroke/Stabilizer.h"

#include <algorithm>

namespace velmor {

namespace {

// The way that is looked back on is cut into so many pieces, or more.
constexpr int pieces = 8;
// Of one motion, however far a window system says that it went.
constexpr double mostSteps = 4096;

} // namespace

CStabilizer::CStabilizer(StabilizerKind kind, double length)
    : m_kind(length > 0 ? kind : StabilizerKind::None), m_length(length) {}

std::vector<CStrokePoint> CStabilizer::Move(const CStrokePoint& pen) {
    if (m_way.empty() || m_kind == StabilizerKind::None) {
        m_way.assign(1, pen);
        return {pen};
    }
    std::vector<CStrokePoint> line;
    if (m_kind == StabilizerKind::Weighted) {
        Follow(pen, line);
    } else if (const double away = Distance(m_way.back().at, pen.at); away > m_length) {
        m_way.back() = {Between(m_way.back().at, pen.at, (away - m_length) / away), pen.pressure};
        line.push_back(m_way.back());
    }
    return line;
}

std::vector<CStrokePoint> CStabilizer::Release(const CStrokePoint& pen) {
    std::vector<CStrokePoint> line = Move(pen);
    if (m_kind == StabilizerKind::Weighted)
        for (int i = 1; i < pieces; ++i)
            line.push_back(Mean(m_length * (pieces - i) / pieces));
    if (line.empty() || line.back() != pen)
        line.push_back(pen);
    return line;
}

void CStabilizer::Follow(const CStrokePoint& pen, std::vector<CStrokePoint>& line) {
    const CStrokePoint from = m_way.back();
    const double steps = std::clamp(std::ceil(Distance(from.at, pen.at) * pieces / m_length), 1.0, mostSteps);
    for (int i = 1; i <= static_cast<int>(steps); ++i) {
        m_way.push_back(Between(from, pen, i / steps));
        line.push_back(Mean(m_length));
    }
    Forget();
}

CStrokePoint CStabilizer::Mean(double length) const {
    CStrokePoint sum{{0, 0}, 0};
    double weights = 0;
    double back = 0; // how far behind the pen
    for (std::size_t i = m_way.size() - 1; i > 0 && back < length; --i) {
        const double piece = Distance(m_way[i - 1].at, m_way[i].at);
        const double weight = piece * std::max(1 - (back + piece / 2) / length, 0.0);
        const CStrokePoint middle = Between(m_way[i - 1], m_way[i], 0.5);
        sum.at.x += middle.at.x * weight;
        sum.at.y += middle.at.y * weight;
        sum.pressure += middle.pressure * weight;
        weights += weight;
        back += piece;
    }
    if (weights <= 0)
        return m_way.back();
    return {{sum.at.x / weights, sum.at.y / weights}, sum.pressure / weights};
}

void CStabilizer::Forget() {
    double back = 0;
    std::size_t used = m_way.size() - 1;
    while (used > 0 && back < m_length) {
        back += Distance(m_way[used - 1].at, m_way[used].at);
        --used;
    }
    m_way.erase(m_way.begin(), m_way.begin() + static_cast<std::ptrdiff_t>(used));
}

} // namespace velmor
