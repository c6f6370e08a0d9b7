#pragma once

#include "image/CelImg.h"
#include "image/clean/Pegs.h"
#include "platform/Status.h"

#include <optional>

namespace velmor {

/// Where the pegs of a page are to come to lie, and how large it is to be.
struct CPegReference {
    CPegs pegs;
    CSize size;
};

/// What is to be done to a scanned drawing, in the order in which it is done.
struct CCleanup {
    static constexpr int mostThreshold = 255;
    static constexpr int mostSpecks = 100;

    int threshold = 0; ///< of a picture: what is darker becomes a black line, the rest paper; 0 leaves it grey
    int specks = 0;    ///< groups of at most so many line pixels go
    bool straightens = false; ///< turned level, by its pegs or else by its long straight edges
    bool registers = false;   ///< put on pegs
    bool erasesPegs = false;  ///< the holes become paper
    int weight = 0;           ///< lines grow (above 0) or shrink by so many pixels, mostLineWeightChange either way
    std::optional<double> dpi; ///< pixels an inch, if they are known

    bool operator==(const CCleanup&) const = default;
    bool NeedsPegs() const { return straightens || registers || erasesPegs; }
};

/// What became of a drawing.
struct CCleanedUp {
    int specks = 0;              ///< that have gone
    std::optional<CPegs> pegs;   ///< where they were found, if they were looked for
    std::optional<CPegs> placed; ///< where they are afterwards
    double degrees = 0;          ///< that it was turned by, counter-clockwise
    CStatus registered; ///< why it was not put on pegs, although it was to be; the rest is done all the same
};

/// How pegs are looked for in an image to be cleaned up.
CPegSearch PegSearchOf(const CCleanup& cleanup);

/// Does all of it. Without a reference pegs come to lie level in the middle (StraightPegs()). Lines are those of a
/// cel, or of a picture with a threshold; other pictures are only turned and moved. Sets the modified flag if
/// anything changes; on failure the image is unchanged.
CStatus CleanUp(CCelImg& image, const CCleanup& cleanup, const std::optional<CPegReference>& reference,
                CCleanedUp& done);

} // namespace velmor
