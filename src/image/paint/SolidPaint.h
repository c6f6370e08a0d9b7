#pragma once

#include "image/CelImg.h"

#include <algorithm>
#include <array>

namespace velmor {

/// Paints runs of an image in one colour.
class CSolidPaint {
public:
    CSolidPaint(CCelImg& image, CColor color)
        : m_image(image),
          m_planes{CPlaneColor{image.PlaneOf(Channel::Red).data(), color.red},
                   CPlaneColor{image.PlaneOf(Channel::Green).data(), color.green},
                   CPlaneColor{image.PlaneOf(Channel::Blue).data(), color.blue},
                   CPlaneColor{image.PlaneOf(Channel::Alpha).data(), color.alpha}} {}

    void operator()(int y, int x, int endX) const {
        const std::size_t first = m_image.IndexOf(x, y);
        for (const CPlaneColor& plane : m_planes)
            std::fill_n(plane.bytes + first, endX - x, plane.value);
    }

private:
    struct CPlaneColor {
        std::uint8_t* bytes;
        std::uint8_t value;
    };

    const CCelImg& m_image;
    std::array<CPlaneColor, 4> m_planes;
};

} // namespace velmor
