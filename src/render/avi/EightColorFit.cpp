#include "render/avi/BlockFit.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "render/avi/EightColorFit.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "render/avi/BlockLanes-inl.h"

HWY_BEFORE_NAMESPACE();
namespace velmor::HWY_NAMESPACE {
namespace {

/// The best division found so far, and the error that it takes off to a common scale.
struct CDivisionLanes {
    VReal score;
    VInt members; ///< bit k for pixel k

    HWY_INLINE void Try(VReal otherScore, int otherMembers) {
        const MReal isBetter = otherScore > score;
        score = hn::IfThenElse(isBetter, otherScore, score);
        members = hn::IfThenElse(hn::RebindMask(dInt, isBetter), hn::Set(dInt, otherMembers), members);
    }
};

HWY_INLINE CColorLanes operator+(const CColorLanes& a, const CColorLanes& b) {
    return {a.blue + b.blue, a.green + b.green, a.red + b.red};
}

/// How far the pixel is from the mean, times 4.
HWY_INLINE CColorLanes GapOf(const CColorLanes& pixel, const CColorLanes& sum) {
    const VReal four = Real(4);
    return {four * pixel.blue - sum.blue, four * pixel.green - sum.green, four * pixel.red - sum.red};
}

/// Which of the first three of the four pixels are best divided from the rest.
HWY_INLINE VInt BestDivision(const CColorLanes (&pixels)[4], const CColorLanes& sum) {
    const CColorLanes gap0 = GapOf(pixels[0], sum);
    const CColorLanes gap1 = GapOf(pixels[1], sum);
    const CColorLanes gap2 = GapOf(pixels[2], sum);
    const CColorLanes gap3 = GapOf(pixels[3], sum);
    const auto single = [](const CColorLanes& gap) HWY_ATTR { return Real(4) * Dot(gap, gap); };
    const auto pair = [](const CColorLanes& gap) HWY_ATTR { return Real(3) * Dot(gap, gap); };
    CDivisionLanes best{single(gap0), hn::Set(dInt, 1)};
    best.Try(single(gap1), 2);
    best.Try(pair(gap0 + gap1), 3);
    best.Try(single(gap2), 4);
    best.Try(pair(gap0 + gap2), 5);
    best.Try(pair(gap1 + gap2), 6);
    best.Try(single(gap3), 7);
    return best.members;
}

HWY_INLINE MReal HasBit(VInt members, int bit) {
    return hn::RebindMask(dReal, hn::TestBit(members, hn::Set(dInt, bit)));
}

/// What is written of a vector of blocks.
struct CWrittenLanes {
    HWY_ALIGN std::int32_t words[8][mostLanes];
    HWY_ALIGN std::int32_t flags[mostLanes];
};

/// Fits a quarter by its lowest row and column, and returns the flags of its first colour.
template<int row, int column>
HWY_INLINE VReal FitQuarter(const CBlockLanes& blocks, CWrittenLanes& fit) {
    constexpr int corner = 4 * row + column;
    constexpr int color = 2 * row + column;
    const CColorLanes pixels[4] = {blocks.pixels[corner], blocks.pixels[corner + 1], blocks.pixels[corner + 4],
                                   blocks.pixels[corner + 5]};
    const CColorLanes sum = pixels[0] + pixels[1] + pixels[2] + pixels[3];
    const VInt members = BestDivision(pixels, sum);
    CGroupLanes group = EmptyGroup();
    group.Add(HasBit(members, 1), pixels[0], 1 << corner);
    group.Add(HasBit(members, 2), pixels[1], 2 << corner);
    group.Add(HasBit(members, 4), pixels[2], 16 << corner);
    hn::Store(WordOf(group), dInt, fit.words[color]);
    hn::Store(WordOf(CGroupLanes{Real(4), sum, Real(0)} - group), dInt, fit.words[color + 1]);
    return group.flags;
}

HWY_INLINE void FitLanes(const CBlockLanes& blocks, CWrittenLanes& fit) {
    const VReal lower = FitQuarter<0, 0>(blocks, fit) + FitQuarter<0, 2>(blocks, fit);
    const VReal upper = FitQuarter<2, 0>(blocks, fit) + FitQuarter<2, 2>(blocks, fit);
    hn::Store(hn::ConvertTo(dInt, lower + upper), dInt, fit.flags);
}

void FitEightColors(const CBlockRow& row, std::span<const std::int32_t> blocks, std::span<CEightColors> fits) {
    CWrittenLanes written;
    for (std::size_t i = 0; i < blocks.size(); i += hn::Lanes(dInt)) {
        FitLanes(TakeBlocks(row, blocks.data() + i), written);
        for (std::size_t lane = 0; lane < hn::Lanes(dInt); ++lane) {
            CEightColors& fit = fits[i + lane];
            fit.flags = static_cast<std::uint16_t>(written.flags[lane]);
            for (std::size_t color = 0; color < 8; ++color)
                fit.colors[color] = static_cast<Word>(written.words[color][lane]);
        }
    }
}

} // namespace
} // namespace velmor::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace velmor {

HWY_EXPORT(FitEightColors);

void FitEightColors(const CBlockRow& row, std::span<const std::int32_t> blocks, std::span<CEightColors> fits) {
    HWY_DYNAMIC_DISPATCH(FitEightColors)(row, blocks, fits);
}

} // namespace velmor

#endif
