#include "image/render/RowKernels.h"

#include "image/render/ExactPixel.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/render/RowKernels.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#if HWY_TARGET != HWY_SCALAR
#include "image/render/GroupSampling-inl.h"
#endif

HWY_BEFORE_NAMESPACE();
namespace velmor::HWY_NAMESPACE {
namespace {

#if HWY_TARGET == HWY_SCALAR

// Processors without any of the instruction sets: pixel by pixel.

/// Nearest pixel or interpolation.
std::uint32_t ExactSample(const CRowWork& work, int column, bool interpolate) {
    const CSourcePoint point = work.mapping.PointOf(column, work.row);
    const int x = static_cast<int>(point.x);
    const int y = static_cast<int>(point.y);
    constexpr int up = CStripedPixels::rowPitch;
    const std::uint32_t* at = work.source.Pixels().Origin() + work.source.Pixels().OffsetOf(x, y);
    if (!interpolate)
        return *at;
    std::uint32_t sample = 0;
    for (int shift = 0; shift < 32; shift += 8)
        sample |= Interpolate(ByteOf(at[0], shift), ByteOf(at[1], shift), ByteOf(at[up], shift),
                              ByteOf(at[up + 1], shift), point.x - x, point.y - y)
                  << shift;
    return sample;
}

void DrawExactPixel(const CRowWork& work, int column, bool interpolate, std::uint32_t& pixel) {
    const std::uint32_t sample = ExactSample(work, column, interpolate);
    const auto alpha = static_cast<int>(sample >> 24);
    pixel = BlendPixel(sample, pixel, work.alphas ? (*work.alphas)[static_cast<std::size_t>(alpha)] : alpha);
}

template<bool interpolate>
void DrawColumns(const CRowWork& work, CColumnSpan columns, std::uint32_t* pixels) {
    for (int column = columns.begin; column < columns.end; ++column)
        DrawExactPixel(work, column, interpolate, pixels[column]);
}

void NearestColumns(const CRowWork& work, CColumnSpan columns, std::uint32_t* pixels) {
    DrawColumns<false>(work, columns, pixels);
}

void InterpolatedColumns(const CRowWork& work, CColumnSpan columns, std::uint32_t* pixels) {
    DrawColumns<true>(work, columns, pixels);
}

#else

/// value / 255 for all values up to 65534: 0x8081 * 255 is 2^23 + 127, which makes the quotient too large by less
/// than 1/255.
template<class V>
HWY_INLINE V DivideBy255(V value) {
    return hn::ShiftRight<7>(hn::MulHigh(value, hn::Set(DU16(), std::uint16_t{0x8081})));
}

/// Samples over `below`; alpha in each lane 0 to 255. High bytes are without meaning.
HWY_INLINE VU32 Blend(VU32 sample, VU32 below, VU32 alpha) {
    const DU16 du16;
    const auto evenBytes = hn::Set(du32, 0x00ff00ffU);
    const auto weight = hn::BitCast(du16, hn::Or(alpha, hn::ShiftLeft<16>(alpha)));
    const auto rest = hn::Sub(hn::Set(du16, std::uint16_t{255}), weight);
    const auto blend = [&](VU32 top, VU32 bottom) HWY_ATTR {
        const auto sum = hn::Add(hn::Mul(hn::BitCast(du16, top), weight), hn::Mul(hn::BitCast(du16, bottom), rest));
        return hn::BitCast(du32, DivideBy255(sum));
    };
    const VU32 redBlue = blend(hn::And(sample, evenBytes), hn::And(below, evenBytes));
    const VU32 green =
        blend(hn::And(hn::ShiftRight<8>(sample), evenBytes), hn::And(hn::ShiftRight<8>(below), evenBytes));
    return hn::Or(redBlue, hn::ShiftLeft<8>(green));
}

HWY_INLINE VU32 LookUp(const AlphaTable& alphas, VU32 alpha) {
    const VU32 last = hn::Set(du32, 255U);
    if (hn::AllTrue(du32, hn::Eq(alpha, last)))
        return hn::Set(du32, static_cast<std::uint32_t>(alphas.back()));
    if (hn::AllTrue(du32, hn::Eq(alpha, hn::Zero(du32))))
        return alpha;
    HWY_ALIGN std::uint32_t lanes[CPixelRow::slack];
    hn::Store(alpha, du32, lanes);
    for (std::size_t lane = 0; lane < hn::Lanes(du32); ++lane)
        lanes[lane] = static_cast<std::uint32_t>(alphas[lanes[lane]]);
    return hn::Load(du32, lanes);
}

/// Draws the lanes of `mask`.
HWY_INLINE void DrawSamples(const AlphaTable* alphas, VU32 sample, MU32 mask, std::uint32_t* pixels) {
    VU32 alpha = hn::ShiftRight<24>(sample);
    if (alphas)
        alpha = LookUp(*alphas, alpha);
    alpha = hn::IfThenElseZero(mask, alpha);
    if (hn::AllTrue(du32, hn::Eq(alpha, hn::Set(du32, 255U)))) {
        hn::StoreU(sample, du32, pixels);
        return;
    }
    if (hn::AllTrue(du32, hn::Eq(alpha, hn::Zero(du32))))
        return;
    hn::StoreU(Blend(sample, hn::LoadU(du32, pixels), alpha), du32, pixels);
}

/// Draws one colour over `count` pixels.
HWY_INLINE void DrawRun(const AlphaTable* alphas, std::uint32_t color, int count, std::uint32_t* pixels) {
    const std::uint32_t sampled = color >> 24;
    const std::uint32_t alpha = alphas ? static_cast<std::uint32_t>((*alphas)[sampled]) : sampled;
    if (alpha == 0)
        return;
    const VU32 sample = hn::Set(du32, color);
    const VU32 alphaLanes = hn::Set(du32, alpha);
    for (int done = 0; done < count; done += GroupSize()) {
        const MU32 mask = hn::FirstN(du32, static_cast<std::size_t>(count - done));
        const VU32 below = hn::LoadU(du32, pixels + done);
        const VU32 blended = alpha == 255 ? sample : Blend(sample, below, alphaLanes);
        hn::StoreU(hn::IfThenElse(mask, blended, below), du32, pixels + done);
    }
}

/// Draws up to a group by the formula.
template<bool interpolate>
void DrawExactGroup(const CRowWork& work, int column, int count, std::uint32_t* pixels) {
    const VU32 sample = interpolate ? ExactGroup(work, column, count) : ExactNearestGroup(work, column, count);
    DrawSamples(work.alphas, sample, hn::FirstN(du32, static_cast<std::size_t>(count)), pixels + column);
}

enum class Sampling { Nearest, Interpolated, InterpolatedOpaque };

/// Draws areas of one colour and group after group from column `first` on, while they are without a doubt. Returns
/// the first column that is not drawn; those before `first` are drawn already. A function without calls, so that
/// its constants stay in registers.
template<Sampling sampling, class Points>
HWY_NOINLINE int DrawPlainGroups(const CRowWork& work, const Points& points, CColumnSpan columns, int first,
                                 bool isExact, std::uint32_t* pixels) {
    const CUniformMap& areas = work.source.UniformAreas();
    const CRunSettings runs = work.runs;
    const MU32 whole = hn::Not(hn::FirstN(du32, 0));
    const int group = GroupSize();
    int column = first;
    while (column < columns.end) {
        const int x = points.XAt(column);
        const int y = points.YAt(column);
        const int distance = areas.DistanceAt(x, y);
        const int length = runs.LengthAt(distance, x, y);
        if (distance >= CRunSettings::leastDistance && length >= CRunSettings::leastLength) {
            const int run = std::min(length, columns.end - column);
            DrawRun(work.alphas, areas.ColorAt(x, y), run, pixels + column);
            column += run;
            continue;
        }
        // What is left of less than a group is drawn as the end of a whole one.
        const int at = std::min(column, columns.end - group);
        if (at < columns.begin)
            break;
        const MU32 lanes = at == column ? whole : hn::Not(hn::FirstN(du32, static_cast<std::size_t>(column - at)));
        VU32 sample;
        MU32 doubtful;
        if constexpr (sampling == Sampling::Nearest)
            points.Nearest(at, sample, doubtful);
        else {
            const CCorners corners = points.Corners(at);
            if (sampling == Sampling::Interpolated && IsUniform(corners)) {
                DrawSamples(work.alphas, corners.p, lanes, pixels + at);
                column = at + group;
                continue;
            }
            sample = RoughGroup<sampling == Sampling::InterpolatedOpaque>(corners, isExact, doubtful);
        }
        if (!hn::AllFalse(du32, doubtful))
            break;
        DrawSamples(work.alphas, sample, lanes, pixels + at);
        column = at + group;
    }
    return column;
}

template<Sampling sampling, class Points>
void DrawColumns(const CRowWork& work, const Points& points, CColumnSpan columns, bool isExact,
                 std::uint32_t* pixels) {
    int column = columns.begin;
    while (true) {
        column = DrawPlainGroups<sampling>(work, points, columns, column, isExact, pixels);
        if (column >= columns.end)
            return;
        const int count = std::min(columns.end - column, GroupSize());
        DrawExactGroup<sampling != Sampling::Nearest>(work, column, count, pixels);
        column += count;
    }
}

/// For rows whose line cannot be trusted.
template<bool interpolate>
void DrawColumnsExactly(const CRowWork& work, CColumnSpan columns, std::uint32_t* pixels) {
    for (int column = columns.begin; column < columns.end; column += GroupSize())
        DrawExactGroup<interpolate>(work, column, std::min(columns.end - column, GroupSize()), pixels);
}

void NearestColumns(const CRowWork& work, CColumnSpan columns, std::uint32_t* pixels) {
    if (work.columns)
        DrawColumns<Sampling::Nearest>(work, CTablePoints(work), columns, true, pixels);
    else if (work.mapping.IsEstimable())
        DrawColumns<Sampling::Nearest>(work, CLinePoints(work), columns, false, pixels);
    else
        DrawColumnsExactly<false>(work, columns, pixels);
}

template<Sampling sampling>
void InterpolateColumns(const CRowWork& work, CColumnSpan columns, std::uint32_t* pixels) {
    if (work.columns) {
        // With 7 bits of both fractions nothing is rounded away in single precision.
        const bool isExact =
            work.columns->isCoarse && work.sourceFraction * 128 == std::floor(work.sourceFraction * 128);
        DrawColumns<sampling>(work, CTablePoints(work), columns, isExact, pixels);
    } else if (work.mapping.IsEstimable()) {
        DrawColumns<sampling>(work, CLinePoints(work), columns, false, pixels);
    } else {
        DrawColumnsExactly<true>(work, columns, pixels);
    }
}

void InterpolatedColumns(const CRowWork& work, CColumnSpan columns, std::uint32_t* pixels) {
    if (work.source.IsOpaque())
        InterpolateColumns<Sampling::InterpolatedOpaque>(work, columns, pixels);
    else
        InterpolateColumns<Sampling::Interpolated>(work, columns, pixels);
}

#endif

} // namespace
} // namespace velmor::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace velmor {

HWY_EXPORT(NearestColumns);
HWY_EXPORT(InterpolatedColumns);

void DrawNearest(const CRowWork& work, CColumnSpan columns, std::uint32_t* pixels) {
    if (!columns.IsEmpty())
        HWY_DYNAMIC_DISPATCH(NearestColumns)(work, columns, pixels);
}

void DrawInterpolated(const CRowWork& work, CColumnSpan columns, std::uint32_t* pixels) {
    if (!columns.IsEmpty())
        HWY_DYNAMIC_DISPATCH(InterpolatedColumns)(work, columns, pixels);
}

std::vector<std::string_view> KernelTargets() {
    std::vector<std::string_view> names;
    for (const std::int64_t target : hwy::SupportedAndGeneratedTargets())
        names.emplace_back(hwy::TargetName(target));
    return names;
}

void UseKernelTarget(std::string_view name) {
    hwy::SetSupportedTargetsForTest(0);
    for (const std::int64_t target : hwy::SupportedAndGeneratedTargets())
        if (hwy::TargetName(target) == name) {
            hwy::SetSupportedTargetsForTest(target);
            break;
        }
    hwy::GetChosenTarget().Update(hwy::SupportedTargets());
}

} // namespace velmor

#endif
