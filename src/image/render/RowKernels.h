#pragma once

#include "image/render/RenderSource.h"
#include "image/render/SourceMapping.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace velmor {

// The inner loops of drawing, compiled for several instruction sets and chosen when the program runs. Whichever is
// chosen, the bytes are the same.

/// The source columns of an image that is not rotated, which are the same for every row. CPixelRow::slack entries
/// follow the last column.
struct CColumnTable {
    std::vector<std::int32_t> x;          ///< truncated; 0 where the column is outside the image
    std::vector<std::int64_t> byteOffset; ///< of the pixel in row 0 of the image
    std::vector<double> fraction;         ///< what truncation took
    std::vector<float> roughFraction;     ///< the same, rounded
    bool isConsecutive = false;           ///< x grows by 1 from column to column, over all columns inside
    bool isDense = false;                 ///< x grows by 0 or 1
    bool isIntegral = false;              ///< all fractions are 0
    bool isCoarse = false;                ///< all fractions are whole 128ths
};

/// Alpha of a layer's pixels by their sampled alpha.
using AlphaTable = std::array<std::int32_t, 256>;

/// One source coordinate along a row in fixed point, within CSourceMapping::estimateError of the formula.
struct CFixedLine {
    std::int64_t start;
    std::int64_t step;

    CFixedLine(double from, double stepSize) : start(ToFixed(from)), step(ToFixed(stepSize)) {}

    std::int64_t At(int column) const { return start + column * step; }
    int PixelAt(int column) const { return static_cast<int>(At(column) >> CSourceMapping::fractionBits); }
    static std::int64_t ToFixed(double value) {
        return static_cast<std::int64_t>(value * CSourceMapping::fixedOne);
    }
};

/// How far the source point moves over the lanes of a vector, in fixed point.
struct CLaneSteps {
    std::array<std::int64_t, CPixelRow::slack> x{};
    std::array<std::int64_t, CPixelRow::slack> y{};
};

/// How far areas of one colour are drawn at once.
struct CRunSettings {
    /// A run of fewer pixels is not worth it.
    static constexpr int leastLength = 8;
    /// In the map: the estimated point may lie a pixel beside the right one, in the next tile.
    static constexpr int leastDistance = 2;

    CRunSettings() = default;
    explicit CRunSettings(const CSourceMapping& mapping) : m_x(mapping.StepX()), m_y(mapping.StepY()) {}

    /// Columns to draw from the one whose source pixel is (x, y) on, so that they and the next pixel of both axes
    /// are in the area; `distance` is the map's. Not positive when nothing is known.
    int LengthAt(int distance, int x, int y) const {
        return static_cast<int>(std::min(m_x.LengthAt(distance, x), m_y.LengthAt(distance, y)));
    }

private:
    /// One axis of the source.
    struct CAxis {
        static constexpr int bits = 16;

        std::int64_t columnsPerPixel = 0; ///< times 2^bits
        int flip = 0;

        CAxis() = default;
        explicit CAxis(double step) {
            constexpr double most = 0x1p32;
            constexpr double one = 1 << bits;
            const double pixels = std::abs(step);
            columnsPerPixel = static_cast<std::int64_t>(pixels > one / most ? one / pixels : most);
            flip = step < 0 ? 0 : CUniformMap::tileSide - 1;
        }

        std::int64_t LengthAt(int distance, int position) const {
            // Pixels between the place in the tile and the end of the area that the row runs towards.
            const int ahead = ((position & (CUniformMap::tileSide - 1)) ^ flip);
            return (CUniformMap::ReachOf(distance) + ahead) * columnsPerPixel >> bits;
        }
    };

    CAxis m_x;
    CAxis m_y;
};

/// A row of a placed image.
struct CRowWork {
    const CRenderSource& source;
    const CSourceMapping& mapping;
    const AlphaTable* alphas = nullptr;    ///< null: as sampled
    const CColumnTable* columns = nullptr; ///< null: rotated
    const CLaneSteps* laneSteps = nullptr; ///< for a rotated image that is estimable
    CRunSettings runs{};
    std::ptrdiff_t aheadBytes = 0; ///< from a source pixel to that of a row drawn a little later
    CSourcePoint start{};          ///< of column 0
    int row = 0;                   ///< of the destination
    int sourceY = 0;               ///< with `columns`: the source row
    double sourceFraction = 0;     ///< and its fraction
};

/// Draws columns of a row; every one must have its source point inside the image, for the interpolated drawing also
/// the next pixel of both axes. `pixels` is the whole row, with the slack of CPixelRow.
void DrawNearest(const CRowWork& work, CColumnSpan columns, std::uint32_t* pixels);
void DrawInterpolated(const CRowWork& work, CColumnSpan columns, std::uint32_t* pixels);

/// For tests and benchmarks: the instruction sets that this machine can run, best first, and a choice among them
/// (best of all when `name` is empty). Not while anything is drawn.
std::vector<std::string_view> KernelTargets();
void UseKernelTarget(std::string_view name);

} // namespace velmor
