#pragma once

#include "image/CelImg.h"
#include "image/paint/PaintResult.h"
#include "image/select/SelectWhat.h"

#include <cstdint>

namespace velmor {

/// One colour in the place of another.
struct CRecoloring {
    CColor from;
    CColor to;
    int tolerance = 0; ///< 0 to 255, each of red, green and blue, and alpha unless it is kept; 0 for exactly `from`
    SelectWhat what = SelectWhat::Both;
    bool keepsAlpha = false; ///< pixels keep their alpha, and are found whatever it is

    bool operator==(const CRecoloring&) const = default;
};

/// How many pixels have the colour; none when nothing is loaded.
std::int64_t CountColor(const CCelImg& image, const CRecoloring& recoloring);
/// Gives them the other one; line bits stay. An image without such pixels is not marked as modified.
CPaintResult Recolor(CCelImg& image, const CRecoloring& recoloring);

} // namespace velmor
