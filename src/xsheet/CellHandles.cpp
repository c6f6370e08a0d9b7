#include "xsheet/CellHandles.h"

#include "xsheet/CameraMap.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace velmor {

namespace {

constexpr double turnStep = std::numbers::pi / 12;

// From the middle to a corner, in the cell's own directions.
CRealPoint ToCorner(const CCellTransform& cell, CSize image, int corner) {
    const double x = cell.scaleX * image.width / 2;
    const double y = cell.scaleY * image.height / 2;
    return {corner == 0 || corner == 3 ? -x : x, corner < 2 ? -y : y};
}

// A cell's rotation goes clockwise.
CRealPoint OnStage(const CCellTransform& cell, CRealPoint own) {
    const CRealPoint turned = Turned(own, -cell.rotation);
    return {cell.posX + turned.x, cell.posY + turned.y};
}

CRealPoint Minus(CRealPoint a, CRealPoint b) {
    return {a.x - b.x, a.y - b.y};
}

// By how much a length grows; as far as a pixel is left of it, and not at all where there is nothing to grow.
double Growth(double to, double from) {
    if (from == 0)
        return 1;
    return std::max(to / from, 1 / std::max(std::abs(from), 1.0));
}

} // namespace

std::array<CRealPoint, 4> CellCornersOnStage(const CCellTransform& cell, CSize image) {
    std::array<CRealPoint, 4> corners;
    for (int corner = 0; corner < 4; ++corner)
        corners[static_cast<std::size_t>(corner)] = OnStage(cell, ToCorner(cell, image, corner));
    return corners;
}

CCellHandleDrag::CCellHandleDrag(const CCellTransform& cell, CSize image, CellHandle handle, int corner,
                                 CRealPoint press)
    : m_cell(cell), m_image(image), m_handle(handle), m_corner(corner), m_press(press), m_last(press) {}

CCellTransform CCellHandleDrag::To(CRealPoint point, const CKeys& keys) {
    return m_handle == CellHandle::Scale ? ScaledTo(point, keys) : TurnedTo(point, keys);
}

CCellTransform CCellHandleDrag::ScaledTo(CRealPoint point, const CKeys& keys) const {
    const CRealPoint half = ToCorner(m_cell, m_image, m_corner);
    const double reach = keys.otherPivot ? 1 : 2; // from what stays to the corner, in half sizes
    const CRealPoint from{half.x * reach, half.y * reach};
    const CRealPoint motion = Turned(Minus(point, m_press), m_cell.rotation);
    const CRealPoint to{from.x + motion.x, from.y + motion.y};
    CRealPoint growth{Growth(to.x, from.x), Growth(to.y, from.y)};
    if (keys.constrained) {
        const double square = from.x * from.x + from.y * from.y;
        const double along = square > 0 ? (to.x * from.x + to.y * from.y) / square : 1;
        const double least = 1 / std::max(std::sqrt(square), 1.0);
        growth = {std::max(along, least), std::max(along, least)};
    }
    CCellTransform cell = m_cell;
    cell.scaleX *= growth.x;
    cell.scaleY *= growth.y;
    if (!keys.otherPivot) {
        const CRealPoint centre = OnStage(m_cell, {half.x * (growth.x - 1), half.y * (growth.y - 1)});
        cell.posX = centre.x;
        cell.posY = centre.y;
    }
    return cell;
}

CCellTransform CCellHandleDrag::TurnedTo(CRealPoint point, const CKeys& keys) {
    const CRealPoint opposite = OnStage(m_cell, ToCorner(m_cell, m_image, (m_corner + 2) % 4));
    const CRealPoint pivot = keys.otherPivot ? opposite : Centre();
    const auto angleOf = [&](CRealPoint at) { return std::atan2(at.y - pivot.y, at.x - pivot.x); };
    m_turned += std::remainder(angleOf(point) - angleOf(m_last), 2 * std::numbers::pi);
    m_last = point;
    double turned = m_turned;
    if (keys.constrained) // to a rotation that is a multiple of the step
        turned = m_cell.rotation - std::round((m_cell.rotation - turned) / turnStep) * turnStep;
    const CRealPoint centre = Turned(Minus(Centre(), pivot), turned);
    CCellTransform cell = m_cell;
    cell.rotation -= turned;
    if (keys.otherPivot) {
        cell.posX = pivot.x + centre.x;
        cell.posY = pivot.y + centre.y;
    }
    return cell;
}

} // namespace velmor
