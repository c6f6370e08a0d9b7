#include "render/avi/BlockFit.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "render/avi/FewColorFit.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "render/avi/BlockLanes-inl.h"

HWY_BEFORE_NAMESPACE();
namespace velmor::HWY_NAMESPACE {
namespace {

/// Sums of products of the pixels' distances from the block's mean, times 16.
struct CCovarianceLanes {
    CColorLanes blue;
    CColorLanes green;
    CColorLanes red;
};

struct CStatisticsLanes {
    CGroupLanes whole;
    CCovarianceLanes covariance;
};

HWY_INLINE CColorLanes operator*(VReal factor, const CColorLanes& color) {
    return {factor * color.blue, factor * color.green, factor * color.red};
}

HWY_INLINE CStatisticsLanes Measure(const CBlockLanes& blocks) {
    const VReal zero = hn::Zero(dReal);
    CColorLanes sum{zero, zero, zero};
    VReal blueBlue = zero, greenGreen = zero, redRed = zero, blueGreen = zero, blueRed = zero, greenRed = zero;
    for (const CColorLanes& pixel : blocks.pixels) {
        sum = {sum.blue + pixel.blue, sum.green + pixel.green, sum.red + pixel.red};
        blueBlue = blueBlue + pixel.blue * pixel.blue;
        greenGreen = greenGreen + pixel.green * pixel.green;
        redRed = redRed + pixel.red * pixel.red;
        blueGreen = blueGreen + pixel.blue * pixel.green;
        blueRed = blueRed + pixel.blue * pixel.red;
        greenRed = greenRed + pixel.green * pixel.red;
    }
    const VReal count = Real(16);
    blueGreen = count * blueGreen - sum.blue * sum.green;
    blueRed = count * blueRed - sum.blue * sum.red;
    greenRed = count * greenRed - sum.green * sum.red;
    return {{count, sum, Real(0xffff)},
            {{count * blueBlue - sum.blue * sum.blue, blueGreen, blueRed},
             {blueGreen, count * greenGreen - sum.green * sum.green, greenRed},
             {blueRed, greenRed, count * redRed - sum.red * sum.red}}};
}

/// Squared error of the block in its mean colour, times 16.
HWY_INLINE VReal ErrorOfOneColor(const CCovarianceLanes& c) {
    return c.blue.blue + c.green.green + c.red.red;
}

/// What no division into two colours can fall below, in the same scale: a division takes no more off than the
/// spread along the principal axis, and that is at most the norm of the covariance.
HWY_INLINE VReal LeastErrorOfTwoColors(const CCovarianceLanes& c) {
    const auto square = [](VReal value) HWY_ATTR { return value * value; };
    const VReal mixed = square(c.blue.green) + square(c.blue.red) + square(c.green.red);
    return ErrorOfOneColor(c) -
           hn::Sqrt(square(c.blue.blue) + square(c.green.green) + square(c.red.red) + Real(2) * mixed);
}

HWY_INLINE CColorLanes Select(MReal condition, const CColorLanes& yes, const CColorLanes& no) {
    return {hn::IfThenElse(condition, yes.blue, no.blue), hn::IfThenElse(condition, yes.green, no.green),
            hn::IfThenElse(condition, yes.red, no.red)};
}

/// Direction in which the pixels differ most: two steps of the power method on their covariance, the first from the
/// channel that varies most, which gives that channel's own row.
HWY_INLINE CColorLanes PrincipalAxis(const CCovarianceLanes& c) {
    const VReal blue = c.blue.blue;
    const VReal green = c.green.green;
    const VReal red = c.red.red;
    const MReal isGreen = hn::And(green >= red, green >= blue);
    const CColorLanes row = Select(isGreen, c.green, Select(blue >= red, c.blue, c.red));
    return {Dot(c.blue, row), Dot(c.green, row), Dot(c.red, row)};
}

/// The pixels on the far side of a plane.
HWY_INLINE CGroupLanes Beyond(const CBlockLanes& blocks, const CColorLanes& axis, VReal threshold) {
    CGroupLanes group = EmptyGroup();
    for (int i = 0; i < 16; ++i)
        group.Add(Dot(blocks.pixels[i], axis) > threshold, blocks.pixels[i], static_cast<float>(1 << i));
    return group;
}

HWY_INLINE CColorLanes MeanOf(const CGroupLanes& group) {
    return Real(1) / group.count * group.sum;
}

/// Every pixel to the nearer of the two mean colours. Where all pixels are on one side they stay so, and the result
/// is empty: the mean of none is not a number, and nothing is beyond that.
HWY_INLINE CGroupLanes Refine(const CBlockLanes& blocks, const CGroupLanes& whole, const CGroupLanes& group) {
    const CColorLanes first = MeanOf(group);
    const CColorLanes second = MeanOf(whole - group);
    const CColorLanes axis{first.blue - second.blue, first.green - second.green, first.red - second.red};
    const VReal half = Real(0.5f);
    const CColorLanes middle{(first.blue + second.blue) * half, (first.green + second.green) * half,
                             (first.red + second.red) * half};
    return Beyond(blocks, axis, Dot(middle, axis));
}

/// What dividing the block takes off the error of one colour.
HWY_INLINE VReal GainOf(const CGroupLanes& group, const CGroupLanes& whole) {
    const auto gap = [&](VReal part, VReal all) HWY_ATTR { return whole.count * part - group.count * all; };
    const CColorLanes gaps{gap(group.sum.blue, whole.sum.blue), gap(group.sum.green, whole.sum.green),
                           gap(group.sum.red, whole.sum.red)};
    return Dot(gaps, gaps) / (group.count * (whole.count - group.count));
}

/// Two colours, of which the last pixel has the second.
struct CTwoColorLanes {
    VInt first;
    VInt second;
    VInt flags;
    VReal error; ///< squared error before rounding to 5 bits, times 16
};

/// Blocks that cannot be divided come out with their mean as both colours.
HWY_INLINE CTwoColorLanes FitTwoColors(const CBlockLanes& blocks, const CStatisticsLanes& statistics, VInt mean) {
    const CGroupLanes& whole = statistics.whole;
    const CColorLanes axis = PrincipalAxis(statistics.covariance);
    CGroupLanes group = Beyond(blocks, axis, Dot(whole.sum, axis) / whole.count);
    group = Refine(blocks, whole, group);
    group = Refine(blocks, whole, group);
    const MReal isDivided = hn::And(group.count > Real(0), group.count < whole.count);
    const MInt isDividedInt = hn::RebindMask(dInt, isDivided);
    const CGroupLanes rest = whole - group;
    const VInt colors[2] = {hn::IfThenElse(isDividedInt, WordOf(group), mean),
                            hn::IfThenElse(isDividedInt, WordOf(rest), mean)};
    const MReal hasLast = group.flags > Real(0x7fff);
    const MInt hasLastInt = hn::RebindMask(dInt, hasLast);
    const VReal flags = hn::IfThenElse(isDivided, hn::IfThenElse(hasLast, rest.flags, group.flags), Real(1));
    const VReal gain = hn::IfThenElseZero(isDivided, GainOf(group, whole));
    return {hn::IfThenElse(hasLastInt, colors[1], colors[0]), hn::IfThenElse(hasLastInt, colors[0], colors[1]),
            hn::ConvertTo(dInt, flags), ErrorOfOneColor(statistics.covariance) - gain};
}

/// What is written of a vector of blocks.
struct CFewColorLanes {
    HWY_ALIGN std::int32_t isClose[mostLanes];
    HWY_ALIGN std::int32_t isOne[mostLanes];
    HWY_ALIGN std::int32_t first[mostLanes];
    HWY_ALIGN std::int32_t second[mostLanes];
    HWY_ALIGN std::int32_t flags[mostLanes];
};

HWY_INLINE void FitLanes(const CBlockLanes& blocks, const CTolerances& tolerances, CFewColorLanes& fit) {
    const CStatisticsLanes statistics = Measure(blocks);
    const VInt mean = WordOf(statistics.whole);
    const MReal isOne = ErrorOfOneColor(statistics.covariance) <= Real(tolerances.oneColor);
    const MReal mayBeTwo = LeastErrorOfTwoColors(statistics.covariance) <= Real(tolerances.twoColors);
    const VInt yes = hn::Set(dInt, 1);
    hn::Store(hn::IfThenElseZero(hn::RebindMask(dInt, isOne), yes), dInt, fit.isOne);
    hn::Store(mean, dInt, fit.second);
    if (hn::AllFalse(dReal, hn::AndNot(isOne, mayBeTwo))) {
        hn::Store(hn::IfThenElseZero(hn::RebindMask(dInt, isOne), yes), dInt, fit.isClose);
        return;
    }
    const CTwoColorLanes two = FitTwoColors(blocks, statistics, mean);
    const MReal isTwo = hn::And(mayBeTwo, two.error <= Real(tolerances.twoColors));
    hn::Store(hn::IfThenElseZero(hn::RebindMask(dInt, hn::Or(isOne, isTwo)), yes), dInt, fit.isClose);
    hn::Store(two.first, dInt, fit.first);
    hn::Store(hn::IfThenElse(hn::RebindMask(dInt, isOne), mean, two.second), dInt, fit.second);
    hn::Store(two.flags, dInt, fit.flags);
}

void FitFewColors(const CBlockRow& row, std::span<const std::int32_t> blocks, const CTolerances& tolerances,
                  std::span<CFewColors> fits) {
    CFewColorLanes fit{};
    for (std::size_t i = 0; i < blocks.size(); i += hn::Lanes(dInt)) {
        FitLanes(TakeBlocks(row, blocks.data() + i), tolerances, fit);
        for (std::size_t lane = 0; lane < hn::Lanes(dInt); ++lane)
            fits[i + lane] = {fit.isClose[lane] != 0, fit.isOne[lane] != 0, static_cast<Word>(fit.first[lane]),
                              static_cast<Word>(fit.second[lane]), static_cast<std::uint16_t>(fit.flags[lane])};
    }
}

} // namespace
} // namespace velmor::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace velmor {

HWY_EXPORT(FitFewColors);

void FitFewColors(const CBlockRow& row, std::span<const std::int32_t> blocks, const CTolerances& tolerances,
                  std::span<CFewColors> fits) {
    HWY_DYNAMIC_DISPATCH(FitFewColors)(row, blocks, tolerances, fits);
}

} // namespace velmor

#endif
