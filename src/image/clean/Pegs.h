#pragma once

#include "image/CelImg.h"
#include "platform/Status.h"

#include <array>
#include <optional>
#include <span>

namespace velmor {

/// Holes that paper for animation is punched with: a round one in the middle between two slots that lie in a row
/// with it.
struct CPegStandard {
    const char* name;
    double slotSpacingInches; ///< from the middle of the round hole to that of either slot
    double slotLengthInches;
    double slotWidthInches;
    double roundInches; ///< across
};

/// The usual ones. They differ in their slots alone, and descriptions of the second differ by more than the two do,
/// so pages are found by what they share: sizes may be off by a third.
std::span<const CPegStandard> PegStandards();

/// Where the holes of a page are. Places are those of pixels: the middle of pixel (x, y) is (x, y).
struct CPegs {
    double x = 0; ///< middle of the row
    double y = 0;
    double degrees = 0; ///< of the row, counter-clockwise
    double spacing = 0; ///< pixels from the round hole to either slot
    double slotLength = 0;
    double slotWidth = 0;
    double round = 0; ///< across
    bool areAtTop = false;
    double confidence = 0; ///< 0 to 1

    /// The name of the standard that they are nearest to.
    const char* StandardName() const;
    /// Middles of the holes, from left to right.
    struct CPlace {
        double x, y;
    };
    std::array<CPlace, 3> Middles() const;
};

struct CPegSearch {
    int threshold = 128;       ///< of a picture: a grey level below it is dark
    std::optional<double> dpi; ///< pixels an inch, if they are known
};

/// Finds the holes of a page at its top or bottom, turned by up to 15 degrees: dark on light (the lid of the
/// scanner), light on dark, or as outlines. Fails with a text that says what was not found.
CStatus FindPegs(const CCelImg& page, const CPegSearch& search, CPegs& pegs);

/// Where the pegs are of a page that lies straight: a level row in the middle, its distance from the edge at which
/// it lies being the usual one.
CPegs StraightPegs(const CPegs& pegs, CSize page);

/// Turns and moves a page, which gets the size of the other one, so that its pegs lie on those of the other. Fails
/// when they lie at the other edge, or are further apart or closer together, so that they do not fit.
CStatus PutOnPegs(CCelImg& page, const CPegs& pegs, const CPegs& reference, CSize size);

/// Makes the holes, with what is dark around them, white paper.
void ErasePegs(CCelImg& page, const CPegs& pegs);

} // namespace velmor
