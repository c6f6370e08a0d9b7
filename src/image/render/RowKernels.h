#pragma once

#include "image/render/RenderSource.h"
#include "image/render/SourceMapping.h"

#include <algorithm>
#include <array>
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

/// When and how far areas of one colour are drawn at once.
struct CRunSettings {
    /// A run of fewer pixels is not worth it.
    static constexpr int leastLength = 8;

    int leastDistance = 256;    ///< in the map of uniform areas
    double columnsPerPixel = 0; ///< columns for a source pixel, along the axis on which the source runs faster

    CRunSettings() = default;
    explicit CRunSettings(const CSourceMapping& mapping);

    int LengthAt(int distance) const {
        return static_cast<int>(std::min(CUniformMap::ReachOf(distance) * columnsPerPixel, 65536.0));
    }
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
