#pragma once

#include "image/Geometry.h"
#include "platform/Status.h"

#include <vector>

namespace velmor {

/// What the flipbook dialog edits.
struct CFlipbookSettings {
    static constexpr int mostLevels = 50;

    std::vector<int> levels; ///< chosen levels, 0-based, in list order
    int firstFrame = 1;      ///< from 1, inclusive
    int lastFrame = 1;
    int step = 1;
    int scaling = 50; ///< percent, 10 to 100
    int quality = 50; ///< percent, 10 to 100
    bool antialias = false;
};

/// Refuses no levels, frames outside the xsheet, steps over half of the range and percentages out of theirs, with
/// the text to show. Takes the first mostLevels levels only.
CStatus CheckFlipbookSettings(const CFlipbookSettings& settings, int frameCount);

/// Size of a flipbook: the width scaled and raised to the next multiple of 4 (always by 1 to 4), the height in
/// proportion.
struct CFlipbookGeometry {
    CSize output;
    double factor = 1; ///< output width / scene width
};
CFlipbookGeometry FlipbookGeometryOf(CSize scene, int scaling);

} // namespace velmor
