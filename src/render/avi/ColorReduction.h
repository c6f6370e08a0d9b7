#pragma once

#include "render/avi/BlockRow.h"

namespace velmor {

// Compiled for several instruction sets and chosen when the program runs. Whichever is chosen, the results are the
// same.

/// What the blocks are by their words alone, one after the other.
struct CWordColors {
    explicit CWordColors(std::size_t blocks)
        : counts(blocks + CBlockRow::slack), first(counts.size()), second(counts.size()), flags(counts.size()) {}

    std::vector<Word> counts; ///< of different words: 1, 2, or 3 for more
    std::vector<Word> first;  ///< of two words the one that the last pixel has not
    std::vector<Word> second; ///< the last pixel's
    std::vector<Word> flags;  ///< bit y x 4 + x where a pixel's word is not the second
};

/// Takes one row of pixels, blue green red, into the row of blocks. `pixels` has as many as the blocks are wide,
/// and CBlockRow::pixelSlack more that may be read.
void SplitPixels(const std::uint8_t* pixels, CBlockRow::CPixels& row, std::size_t count);

void FindWordColors(const CBlockRow& row, CWordColors& colors);

} // namespace velmor
