#pragma once

#include "image/CelImg.h"
#include "image/Geometry.h"

#include <array>
#include <vector>

namespace velmor {

/// Paints runs of a cel with a gradient along the line between two different points: color2 up to `start`, color1
/// from `end` on, between them a mixture by the projection of the pixel on the line.
class CGradientPaint {
public:
    CGradientPaint(CCelImg& cel, CPoint start, CColor color1, CPoint end, CColor color2);

    void operator()(int y, int x, int endX);

private:
    struct PlaneColors {
        std::uint8_t* bytes;
        std::uint8_t color1;
        std::uint8_t color2;
    };

    const CCelImg& m_cel;
    std::array<PlaneColors, 4> m_planes;
    // Whole numbers, exact as long as they are below 2^53, which every line that can be drawn keeps.
    double m_startX;
    double m_startY;
    double m_backX; ///< from the end of the line to its start
    double m_backY;
    double m_squaredLength;
    std::vector<double> m_weights; ///< of color1, for the pixels of one run
};

} // namespace velmor
