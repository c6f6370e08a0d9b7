#include "xsheet/Spacing.h"

#include <algorithm>

namespace velmor {

namespace {

constexpr double leastPart = 0.001; ///< of the path, that stays on either side of a dragged position

// The pace that brings `from` to `to` (both between 0 and 1): slower at the end that it is dragged to, faster at
// the other. Paces of this kind are one when they follow each other, so that a tick that is dragged back brings the
// others back as well.
double Paced(double part, double from, double to) {
    const double ratio = to / (1 - to) * (1 - from) / from;
    return ratio * part / (1 + (ratio - 1) * part);
}

} // namespace

CSpacing::CSpacing(std::span<const CRealPoint> positions)
    : m_path(positions), m_positions(positions.begin(), positions.end()) {
    for (std::size_t i = 0; i < positions.size(); ++i)
        m_parts.push_back(m_path.Length() > 0 ? m_path.LengthTo(i) / m_path.Length() : 0);
}

std::vector<CRealPoint> CSpacing::Dragged(std::size_t tick, CRealPoint to, bool alone) const {
    std::vector<CRealPoint> positions = m_positions;
    if (!(m_path.Length() > 0) || tick == 0 || tick + 1 >= positions.size())
        return positions;
    const double wanted = std::clamp(m_path.Nearest(to) / m_path.Length(), leastPart, 1 - leastPart);
    const double from = m_parts[tick];
    if (alone || from < leastPart || from > 1 - leastPart) { // one that stands on a key has no pace to change
        positions[tick] = m_path.At(wanted * m_path.Length());
        return positions;
    }
    for (std::size_t i = 1; i + 1 < positions.size(); ++i)
        positions[i] = m_path.At(Paced(m_parts[i], from, wanted) * m_path.Length());
    return positions;
}

std::vector<CRealPoint> SpreadAlong(std::span<const CRealPoint> drawn, CRealPoint first, CRealPoint last,
                                    CInbetweenKeys keys, CInbetweenPace pace) {
    if (pace.type == InbetweenType::Constant)
        pace.type = InbetweenType::Linear;
    const CPathLine path(Smoothed(drawn));
    const CRealPoint begin = path.At(0);
    const CRealPoint end = path.At(path.Length());
    const CBetweenValues parts(pace, keys, 0, 1);
    std::vector<CRealPoint> positions{first};
    for (int frame = keys.first + 1; frame < keys.last; ++frame) {
        const double part = std::clamp(parts.At(frame), 0.0, 1.0);
        const CRealPoint at = path.At(part * path.Length());
        positions.push_back({at.x + (first.x - begin.x) * (1 - part) + (last.x - end.x) * part,
                             at.y + (first.y - begin.y) * (1 - part) + (last.y - end.y) * part});
    }
    positions.push_back(last);
    return positions;
}

} // namespace velmor
