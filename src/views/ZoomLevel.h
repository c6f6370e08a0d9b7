#pragma once

#include "image/Geometry.h"

#include <algorithm>

namespace velmor {

/// The zoom of the camera view and the cel editor: level 1 shows one screen pixel for one image pixel, n above it n
/// times as large, 0 half, -1 a third, and so on. The level itself is not bounded. Between two levels stands any
/// other factor, for zooming without steps.
class CZoomLevel {
public:
    constexpr CZoomLevel() = default;
    constexpr explicit CZoomLevel(int level) : m_level(level) {}
    /// The level of that factor (above 0), or what stands between levels.
    static constexpr CZoomLevel OfFactor(double factor) {
        const CZoomLevel below = LevelBelow(factor * (1 + sameFactor));
        if (below.Factor() > factor * (1 - sameFactor))
            return below;
        CZoomLevel between = below;
        between.m_between = factor;
        return between;
    }

    /// Between two levels the lower one.
    constexpr int Level() const { return m_level; }
    constexpr bool IsLevel() const { return m_between == 0; }
    constexpr CZoomLevel In() const { return CZoomLevel(m_level + 1); }
    constexpr CZoomLevel Out() const { return CZoomLevel(IsLevel() ? m_level - 1 : m_level); }

    constexpr double Factor() const {
        return m_between != 0 ? m_between : m_level >= 1 ? m_level : 1.0 / Divisor();
    }
    /// Cut off to whole percents.
    constexpr int Percent() const {
        return m_between != 0 ? static_cast<int>(m_between * 100) : m_level >= 1 ? m_level * 100 : 100 / Divisor();
    }
    /// Displayed length of `pixels`.
    constexpr int Scaled(int pixels) const {
        return m_between != 0 ? static_cast<int>(pixels * m_between)
               : m_level >= 1 ? pixels * m_level
                              : pixels / Divisor();
    }
    /// Image pixels for a displayed length.
    constexpr int Unscaled(int length) const {
        return m_between != 0 ? static_cast<int>(length / m_between)
               : m_level >= 1 ? length / m_level
                              : length * Divisor();
    }

    constexpr bool operator==(const CZoomLevel&) const = default;

private:
    static constexpr double sameFactor = 1e-9;

    static constexpr CZoomLevel LevelBelow(double factor) {
        if (factor >= 1)
            return CZoomLevel(static_cast<int>(factor));
        const double divisor = 1 / factor;
        const int whole = static_cast<int>(divisor);
        return CZoomLevel(2 - (whole < divisor ? whole + 1 : whole));
    }
    constexpr int Divisor() const { return 2 - m_level; }

    int m_level = 1;
    double m_between = 0; ///< the factor where it is none of a level
};

/// The largest zoom up to `most` at which an image stands whole in a room; a length below 1 counts as 1.
constexpr CZoomLevel FittingZoom(CSize image, CSize room, CZoomLevel most) {
    const auto levelOf = [](int length, int space) {
        length = std::max(length, 1);
        space = std::max(space, 1);
        return length <= space ? space / length : 2 - ((length - 1) / space + 1);
    };
    return CZoomLevel(
        std::min({levelOf(image.width, room.width), levelOf(image.height, room.height), most.Level()}));
}

/// The scroll position that keeps the point at the centre of a client area `client` long in place when the zoom
/// changes; `total` is the displayed length at the new zoom.
constexpr int ScrollAfterZoom(int scroll, int client, int total, CZoomLevel before, CZoomLevel after) {
    const int half = client / 2;
    const double centre = (scroll + half) * after.Factor() / before.Factor();
    return std::max(0, std::min(static_cast<int>(centre) - half, total - client));
}

} // namespace velmor
