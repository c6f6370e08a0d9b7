#pragma once

#include "xsheet/XSheet.h"

#include <span>
#include <vector>

namespace velmor {

/// Where frames of a level take their cells from: each from a frame of the level as it was, or noFrame for an empty
/// cell. Whatever an edit of the timing does is said by one, so that a cell keeps all that it has: its drawing, its
/// place and its effects.
using FrameOrder = std::vector<int>;
inline constexpr int noFrame = -1;

/// A part of a level.
struct CFrameSpan {
    int first = 0;
    int end = 0; ///< the first frame outside

    int Length() const { return end - first; }
    bool operator==(const CFrameSpan&) const = default;
};

/// What becomes of the cells behind a part of a level whose length changes.
enum class Following {
    Push, ///< they keep their place behind it: moved down, where those pushed past the end are lost, or moved up,
          ///< where the sheet's last cell is repeated
    Eat   ///< they stay where they are, and those that are run over are lost
};

/// The exposures of a part of a level: runs of cells with the same asset, and runs of empty ones.
std::vector<CFrameSpan> ExposuresOf(const CXSheet& xsheet, int level, CFrameSpan part);
/// The whole exposure that a frame belongs to.
CFrameSpan ExposureAt(const CXSheet& xsheet, int level, int frame);

// Orders that make something of a part of a level; in the pictures the part stands in brackets. None is longer than
// CXSheet::mostFramesInFile, whatever is asked for.

/// As often as it fits into `count` frames, here 5:
///
///     [A B]   ->   A B A B A
FrameOrder Repeated(CFrameSpan part, int count);
/// Its last cell is held until there are `count` frames, here 4:
///
///     [A B]   ->   A B B B
FrameOrder HeldOn(CFrameSpan part, int count);
/// Each exposure for `step` frames, here 2; one that gets longer holds its last cell:
///
///     [A B B B]   ->   A A B B
FrameOrder OnFrames(std::span<const CFrameSpan> exposures, int step);
/// Back again after the last exposure, without those at the ends, so that it can be repeated:
///
///     [A B C C]   ->   A B C C B
FrameOrder ThereAndBack(std::span<const CFrameSpan> exposures);
/// Down by `by` frames, or up where it is below 0; what leaves at one end comes in at the other. Here 1:
///
///     [A B C]   ->   C A B
FrameOrder Rolled(CFrameSpan part, int by);
/// In `count` frames what it was in its own number of them, here 6 and 2:
///
///     [A B C]   ->   A A B B C C        [A B C D]   ->   A C
FrameOrder Stretched(CFrameSpan part, int count);
/// Drawings of the part at random in the places that it has for them, none twice in a row, nor after itself in the
/// frame before. Pauses stay. The same seed gives the same order.
///
///     [A B B . C]   ->   C A A . B
FrameOrder Randomized(const CXSheet& xsheet, int level, CFrameSpan part, unsigned seed);

// Orders of whole levels.

/// What is made of a part takes its place. Where it is shorter and eats, empty cells are left. Here B B for B:
///
///     A[B]C D   ->   A B B C        or, eaten,   A B B D
FrameOrder Replacing(int frameCount, CFrameSpan part, const FrameOrder& made, Following following);
/// The part moves down by `by` frames, up where it is below 0, and leaves empty cells. When it moves up, what stood
/// there is lost either way. Here 1:
///
///     A[B C]D E   ->   A . B C D        or, eaten,   A . B C E
FrameOrder Shifting(int frameCount, CFrameSpan part, int by, Following following);
/// An exposure ends at another frame: it holds its last cell, or loses its last ones. When it gets shorter and
/// eats, what follows begins earlier. Here from 2 to 1 and to 3 frames, eaten:
///
///     [A A]B B   ->   A B B B        and   A A A B
FrameOrder Sliding(int frameCount, CFrameSpan exposure, int length, Following following);

} // namespace velmor
