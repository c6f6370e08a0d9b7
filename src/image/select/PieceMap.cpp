#include "image/select/PieceTransform.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace velmor {

namespace {

constexpr double mostGrowth = 4;

bool IsQuarter(double degrees) {
    return std::fmod(degrees, 90) == 0;
}

} // namespace

CPieceMap::CPieceMap(const CRect& place, const CPiecePlacement& placement)
    : m_centre{(place.x + place.endX) / 2.0, (place.y + place.endY) / 2.0},
      m_target{m_centre.x + placement.move.x, m_centre.y + placement.move.y},
      m_scaleX(placement.scaleX),
      m_scaleY(placement.scaleY),
      m_place(place) {
    m_cos = std::cos(placement.degrees * std::numbers::pi / 180);
    m_sin = std::sin(placement.degrees * std::numbers::pi / 180);
    if (IsQuarter(placement.degrees)) {
        m_cos = std::round(m_cos);
        m_sin = std::round(m_sin);
    }
    m_isExact = IsQuarter(placement.degrees) && std::abs(m_scaleX) == 1 && std::abs(m_scaleY) == 1;
    if (!m_isExact || m_sin == 0)
        return;
    // On its side a piece of odd and even sides would lie between the pixels.
    const int width = place.endY - place.y;
    const int height = place.endX - place.x;
    m_target = {std::floor(m_target.x - width / 2.0) + width / 2.0,
                std::floor(m_target.y - height / 2.0) + height / 2.0};
}

CRealPoint CPieceMap::ToImage(CRealPoint point) const {
    const double x = (point.x - m_centre.x) * m_scaleX;
    const double y = (point.y - m_centre.y) * m_scaleY;
    return {m_target.x + x * m_cos - y * m_sin, m_target.y + x * m_sin + y * m_cos};
}

CRealPoint CPieceMap::ToPiece(CRealPoint point) const {
    const double x = point.x - m_target.x;
    const double y = point.y - m_target.y;
    return {m_centre.x + (x * m_cos + y * m_sin) / m_scaleX, m_centre.y + (y * m_cos - x * m_sin) / m_scaleY};
}

CRect CPieceMap::Bounds() const {
    const std::array<CRealPoint, 4> corners{
        ToImage({static_cast<double>(m_place.x), static_cast<double>(m_place.y)}),
        ToImage({static_cast<double>(m_place.endX), static_cast<double>(m_place.y)}),
        ToImage({static_cast<double>(m_place.x), static_cast<double>(m_place.endY)}),
        ToImage({static_cast<double>(m_place.endX), static_cast<double>(m_place.endY)})};
    const auto [left, right] = std::ranges::minmax(corners, {}, &CRealPoint::x);
    const auto [low, high] = std::ranges::minmax(corners, {}, &CRealPoint::y);
    return {static_cast<int>(std::floor(left.x)), static_cast<int>(std::floor(low.y)),
            static_cast<int>(std::ceil(right.x)), static_cast<int>(std::ceil(high.y))};
}

bool CanPlace(const CPiece& piece, const CPiecePlacement& placement, CSize image) {
    const double width = piece.Width() * std::abs(placement.scaleX);
    const double height = piece.Height() * std::abs(placement.scaleY);
    if (!(width >= 1 && height >= 1 && std::isfinite(width * height) && std::isfinite(placement.degrees)))
        return false;
    const double longest = std::hypot(width, height); // of any turn
    const double area = static_cast<double>(image.width) * image.height;
    const double room = mostGrowth * std::max(area, static_cast<double>(piece.Width()) * piece.Height());
    if (longest * longest <= room)
        return true;
    const CRect bounds = longest < 1e6 ? CPieceMap(piece.place, placement).Bounds() : CRect{};
    return !bounds.IsEmpty() &&
           static_cast<double>(bounds.endX - bounds.x) * static_cast<double>(bounds.endY - bounds.y) <= room;
}

} // namespace velmor
