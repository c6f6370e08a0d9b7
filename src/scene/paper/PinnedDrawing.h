#pragma once

#include "scene/paper/Drawing.h"

namespace velmor {

/// How far a sheet of paper is off its pegs.
struct CPegs {
    double x = 0; ///< pixels of the drawing under edit, upwards and to the right
    double y = 0;
    double angle = 0; ///< radians, as of a cell

    bool operator==(const CPegs&) const = default;
};

/// A drawing on the light table.
struct CPinnedDrawing {
    CDrawing drawing;
    CPegs pegs;

    bool operator==(const CPinnedDrawing&) const = default;
};

} // namespace velmor
