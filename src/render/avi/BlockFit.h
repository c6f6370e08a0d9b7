#pragma once

#include "render/avi/BlockRow.h"

namespace velmor {

// Blocks in few colours, as many blocks at a time as a vector holds. Compiled for several instruction sets and
// chosen when the program runs. Whichever is chosen, the results are the same.

/// How far a block's colours may be off, squared and times 16, to be stored as one or as two.
struct CTolerances {
    float oneColor = 0;
    float twoColors = 0;
};

/// A block in two colours: `first` where the pixel's bit in `flags` is set (bit y x 4 + x), else `second`. The last
/// pixel always takes the second colour, and some pixel the first.
struct CFewColors {
    bool isClose = false; ///< within the tolerance
    bool isOne = false;   ///< the second colour alone is
    Word first = 0;
    Word second = 0;
    std::uint16_t flags = 1;
};

/// A block in two colours a quarter, `colors[2 q]` and `colors[2 q + 1]`, flags as in CFewColors.
struct CEightColors {
    std::array<Word, 8> colors{};
    std::uint16_t flags = 1;
};

/// Finds one or two colours for each of the blocks. `fits` has room for CBlockRow::slack more.
void FitFewColors(const CBlockRow& row, std::span<const std::int32_t> blocks, const CTolerances& tolerances,
                  std::span<CFewColors> fits);
/// Finds the best division of every quarter, among all seven. `fits` has room for CBlockRow::slack more.
void FitEightColors(const CBlockRow& row, std::span<const std::int32_t> blocks, std::span<CEightColors> fits);

} // namespace velmor
