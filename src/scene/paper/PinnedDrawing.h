#pragma once

#include "scene/paper/Drawing.h"

namespace velmor {

/// How far a sheet of paper is off its pegs.
struct CPegPlace {
    double x = 0; ///< pixels of the drawing under edit, upwards and to the right
    double y = 0;
    double angle = 0; ///< radians, as of a cell

    bool operator==(const CPegPlace&) const = default;
};

/// A drawing on the light table.
struct CPinnedDrawing {
    CDrawing drawing;
    CPegPlace pegs;

    bool operator==(const CPinnedDrawing&) const = default;
};

} // namespace velmor
