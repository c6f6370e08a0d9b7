#pragma once

#include <array>
#include <cstdint>

namespace velmor {

/// A colour of 5 bits a channel as Microsoft Video 1 stores it: red in bits 10 to 14, then green, then blue.
using Word = std::uint16_t;

/// The 16 pixels of a 4 x 4 block, each channel for itself, 8 bits a channel. Pixel k x 4 + q is pixel k of quarter
/// q, both counted from the lower left, row by row: the four quarters of a block stand side by side.
struct CBlockPixels {
    std::array<int, 16> blue;
    std::array<int, 16> green;
    std::array<int, 16> red;
};

/// Place of row `y`, column `x` of a block among its CBlockPixels.
constexpr int BlockIndexOf(int x, int y) {
    return ((y & 1) * 2 + (x & 1)) * 4 + (y >> 1) * 2 + (x >> 1);
}

/// Sums over a block that tell how well few colours can stand for it.
struct CBlockStatistics {
    int blueSum = 0;
    int greenSum = 0;
    int redSum = 0;
    /// Sums of products of the distances from the mean, times 16.
    int blueBlue = 0;
    int greenGreen = 0;
    int redRed = 0;
    int blueGreen = 0;
    int blueRed = 0;
    int greenRed = 0;

    /// Squared error of the block in its mean colour, times 16.
    int ErrorOfOneColor() const { return blueBlue + greenGreen + redRed; }
    /// What no division into two colours can fall below, in the same scale: a division takes no more off than the
    /// spread along the principal axis, and that is at most the norm of the covariance.
    float LeastErrorOfTwoColors() const;
};

/// The block in two colours: `first` where the pixel's bit in `flags` is set (bit y x 4 + x), else `second`. The
/// last pixel always takes the second colour, and some pixel the first.
struct CTwoColors {
    Word first = 0;
    Word second = 0;
    std::uint16_t flags = 1;
    float error = 0; ///< squared error before rounding to 5 bits, times 16
};

/// The block in two colours a quarter, `colors[2 q]` and `colors[2 q + 1]`, flags as in CTwoColors.
struct CEightColors {
    std::array<Word, 8> colors{};
    std::uint16_t flags = 1;
};

CBlockStatistics MeasureBlock(const CBlockPixels& pixels);
Word FitOneColor(const CBlockStatistics& statistics);
CTwoColors FitTwoColors(const CBlockPixels& pixels, const CBlockStatistics& statistics);
/// The best division of every quarter, found among all seven.
CEightColors FitEightColors(const CBlockPixels& pixels);

} // namespace velmor
