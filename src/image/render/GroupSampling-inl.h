// Sampling of a group of pixels, for one instruction set; included once for each by RowKernels.cpp.

#if defined(VELMOR_GROUP_SAMPLING_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef VELMOR_GROUP_SAMPLING_INL_H
#undef VELMOR_GROUP_SAMPLING_INL_H
#else
#define VELMOR_GROUP_SAMPLING_INL_H
#endif

#include "image/render/RowKernels.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <hwy/cache_control.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace velmor::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

// A group is as many pixels as a vector has 32-bit lanes, at most the slack of a row.
using DU32 = hn::CappedTag<std::uint32_t, CPixelRow::slack>;
using DI32 = hn::RebindToSigned<DU32>;
using DF32 = hn::RebindToFloat<DU32>;
using DU16 = hn::Repartition<std::uint16_t, DU32>;
using DU64 = hn::Repartition<std::uint64_t, DU32>;
using DI64 = hn::RebindToSigned<DU64>;
using DF64 = hn::RebindToFloat<DU64>;
using DHalfI32 = hn::Rebind<std::int32_t, DF64>;
using VU32 = hn::Vec<DU32>;
using VI32 = hn::Vec<DI32>;
using VF32 = hn::Vec<DF32>;
using VU64 = hn::Vec<DU64>;
using VI64 = hn::Vec<DI64>;
using VF64 = hn::Vec<DF64>;
using VHalfI32 = hn::Vec<DHalfI32>;
using MU32 = hn::Mask<DU32>;

inline constexpr DU32 du32;
inline constexpr DI32 di32;
inline constexpr DF32 df32;
inline constexpr DU64 du64;
inline constexpr DI64 di64;
inline constexpr DF64 df64;
inline constexpr DHalfI32 dhalf;

HWY_INLINE int GroupSize() {
    return static_cast<int>(hn::Lanes(du32));
}

/// Lanes below `count` of the lower (0) or upper (1) half of a group.
HWY_INLINE hn::Mask<DI64> HalfMask(int half, int count) {
    const int first = half * GroupSize() / 2;
    return hn::FirstN(di64, static_cast<std::size_t>(std::max(count - first, 0)));
}

// ---- coordinates of a group of pixels

/// The pixels to interpolate between, P Q in a lower and R S in the row above it, and the weights of Q and R.
struct CCorners {
    VU32 p, q, r, s;
    VF32 fx, fy;
    MU32 nearWhole; ///< lanes whose coordinates are too close to a whole number to be told apart from it
};

/// The same for half a group, in 64-bit lanes with P (R) in the low word, Q (S) in the high one; exact.
struct CExactCorners {
    VU64 pq, rs;
    VF64 fx, fy;
};

/// The pair of pixels at a byte offset.
HWY_INLINE std::uint64_t PairAt(const std::uint32_t* pixels, std::int64_t offset) {
    std::uint64_t pair;
    std::memcpy(&pair, reinterpret_cast<const std::uint8_t*>(pixels) + offset, sizeof(pair));
    return pair;
}

/// Reads two neighbouring pixels a lane, at byte offsets. Gather instructions are not used: on many processors,
/// where they had to be made safe against leaking data, they are several times slower than single loads. The
/// offsets are volatile so that each is loaded too; taking them out of a vector would keep its units busy.
HWY_INLINE VU64 GatherPairs(const std::uint32_t* pixels, const volatile std::int64_t* at) {
#if HWY_TARGET <= HWY_AVX3 && HWY_ARCH_X86
    const auto load = [&](int lane)
                          HWY_ATTR { return _mm_cvtsi64_si128(static_cast<long long>(PairAt(pixels, at[lane]))); };
    __m512i pairs = _mm512_castsi128_si512(load(0));
    pairs = _mm512_mask_broadcastq_epi64(pairs, 0x02, load(1));
    pairs = _mm512_mask_broadcastq_epi64(pairs, 0x04, load(2));
    pairs = _mm512_mask_broadcastq_epi64(pairs, 0x08, load(3));
    pairs = _mm512_mask_broadcastq_epi64(pairs, 0x10, load(4));
    pairs = _mm512_mask_broadcastq_epi64(pairs, 0x20, load(5));
    pairs = _mm512_mask_broadcastq_epi64(pairs, 0x40, load(6));
    pairs = _mm512_mask_broadcastq_epi64(pairs, 0x80, load(7));
    return VU64{pairs};
#elif HWY_TARGET == HWY_AVX2
    const auto load = [&](int lane) HWY_ATTR { return static_cast<long long>(PairAt(pixels, at[lane])); };
    return VU64{_mm256_set_epi64x(load(3), load(2), load(1), load(0))};
#elif HWY_TARGET <= HWY_SSSE3 && HWY_ARCH_X86
    const auto load = [&](int lane) HWY_ATTR { return static_cast<long long>(PairAt(pixels, at[lane])); };
    return VU64{_mm_set_epi64x(load(1), load(0))};
#else
    HWY_ALIGN std::uint64_t pairs[CPixelRow::slack];
    for (std::size_t lane = 0; lane < hn::Lanes(du64); ++lane)
        pairs[lane] = PairAt(pixels, at[lane]);
    return hn::Load(du64, pairs);
#endif
}

/// Byte offsets of the pixels of a group.
struct CGroupOffsets {
    HWY_ALIGN std::int64_t at[CPixelRow::slack];

    HWY_INLINE CGroupOffsets(VI64 low, VI64 high) {
        hn::Store(low, di64, at);
        hn::Store(high, di64, at + hn::Lanes(di64));
    }
    HWY_INLINE VU32 Low(const std::uint32_t* pixels) const { return hn::BitCast(du32, GatherPairs(pixels, at)); }
    HWY_INLINE VU32 High(const std::uint32_t* pixels) const {
        return hn::BitCast(du32, GatherPairs(pixels, at + hn::Lanes(di64)));
    }
};

/// The pixels at the offsets.
HWY_INLINE VU32 GatherPixels(const std::uint32_t* pixels, const CGroupOffsets& offsets) {
    return hn::ConcatEven(du32, offsets.High(pixels), offsets.Low(pixels));
}

/// The pixels at the offsets with their neighbours on the right, in the row above and on both.
HWY_INLINE void GatherCorners(const std::uint32_t* pixels, const CGroupOffsets& offsets, CCorners& corners) {
    const VU32 low = offsets.Low(pixels);
    const VU32 high = offsets.High(pixels);
    const VU32 lowAbove = offsets.Low(pixels + CStripedPixels::rowPitch);
    const VU32 highAbove = offsets.High(pixels + CStripedPixels::rowPitch);
    corners.p = hn::ConcatEven(du32, high, low);
    corners.q = hn::ConcatOdd(du32, high, low);
    corners.r = hn::ConcatEven(du32, highAbove, lowAbove);
    corners.s = hn::ConcatOdd(du32, highAbove, lowAbove);
}

/// Has memory fetch what a later row will read of some of a group's lanes. A turned row runs across the rows of the
/// source, which the processor does not foresee; waiting for memory took half of the time of drawing. An address
/// outside the image does no harm.
template<int everyLanes>
HWY_INLINE void FetchAhead(const std::uint32_t* pixels, const CGroupOffsets& offsets, std::ptrdiff_t ahead) {
    for (int lane = 0; lane < GroupSize(); lane += everyLanes)
        hwy::Prefetch(reinterpret_cast<const std::uint8_t*>(pixels) + offsets.at[lane] + ahead);
}

/// The same for a group that reads a part of one row.
HWY_INLINE void FetchRow(const std::uint32_t* pixels, std::ptrdiff_t ahead) {
    hwy::Prefetch(reinterpret_cast<const std::uint8_t*>(pixels) + ahead);
}

/// Byte offsets of pixels in 64-bit lanes, by their stored column and their row.
HWY_INLINE VI64 ByteOffsets(VI64 storedX, VI64 y, const CStripedPixels& pixels) {
    const VI64 rows = hn::MulEven(hn::BitCast(di32, y), hn::Set(di32, CStripedPixels::rowPitch));
    const VI64 stripes = hn::MulEven(hn::BitCast(di32, hn::ShiftRight<CStripedPixels::stripeBits>(storedX)),
                                     hn::Set(di32, pixels.StripeJump()));
    return hn::ShiftLeft<2>(hn::Add(hn::Add(rows, storedX), stripes));
}

/// The exact formula for half a group: the columns from `column` on.
struct CExactPoints {
    VI64 x, y;
    VF64 fx, fy;

    HWY_INLINE CExactPoints(const CRowWork& work, int column, hn::Mask<DI64> mask) {
        const CSourceMapping& mapping = work.mapping;
        VF64 sourceX;
        VF64 sourceY;
        const auto set = [](double value) HWY_ATTR { return hn::Set(df64, value); };
        if (work.columns) {
            const auto index = static_cast<std::size_t>(column);
            x = hn::PromoteTo(di64, hn::LoadU(dhalf, work.columns->x.data() + index));
            fx = hn::LoadU(df64, work.columns->fraction.data() + index);
            y = hn::Set(di64, std::int64_t{work.sourceY});
            fy = set(work.sourceFraction);
            return;
        }
        const VF64 dx = hn::Sub(hn::Iota(df64, column), set(mapping.CentreX()));
        const double dy = work.row - mapping.CentreY();
        const VF64 rotatedX = hn::Sub(hn::Mul(dx, set(mapping.Cosine())), set(dy * mapping.Sine()));
        const VF64 rotatedY = hn::Add(hn::Mul(dx, set(mapping.Sine())), set(dy * mapping.Cosine()));
        sourceX = hn::Add(hn::Div(rotatedX, set(mapping.ScaleX())), set(mapping.HalfWidth()));
        sourceY = hn::Add(hn::Div(rotatedY, set(mapping.ScaleY())), set(mapping.HalfHeight()));
        const auto inside = hn::RebindMask(df64, mask);
        sourceX = hn::IfThenElseZero(inside, sourceX);
        sourceY = hn::IfThenElseZero(inside, sourceY);
        const VHalfI32 wholeX = hn::DemoteTo(dhalf, sourceX);
        const VHalfI32 wholeY = hn::DemoteTo(dhalf, sourceY);
        fx = hn::Sub(sourceX, hn::PromoteTo(df64, wholeX));
        fy = hn::Sub(sourceY, hn::PromoteTo(df64, wholeY));
        x = hn::PromoteTo(di64, wholeX);
        y = hn::PromoteTo(di64, wholeY);
    }
};

/// Points of a rotated row by the line in fixed point.
class CLinePoints {
public:
    explicit CLinePoints(const CRowWork& work)
        : m_pixels(work.source.Pixels()),
          m_width(work.source.Width()),
          m_height(work.source.Height()),
          m_storedX(work.start.x + CStripedPixels::shift, work.mapping.StepX()),
          m_y(work.start.y, work.mapping.StepY()),
          m_ahead(work.aheadBytes),
          m_steps(*work.laneSteps) {}

    int XAt(int column) const {
        return std::clamp(m_storedX.PixelAt(column) - CStripedPixels::shift, 0, m_width - 1);
    }
    int YAt(int column) const { return std::clamp(m_y.PixelAt(column), 0, m_height - 1); }

    HWY_INLINE void Nearest(int column, VU32& sample, MU32& doubtful) const {
        VU32 fractionX;
        VU32 fractionY;
        VI64 low;
        VI64 high;
        Offsets(column, low, high, fractionX, fractionY);
        doubtful = hn::Or(IsNearWhole(fractionX), IsNearWhole(fractionY));
        sample = GatherPixels(m_pixels.Origin(), CGroupOffsets(low, high));
    }

    HWY_INLINE CCorners Corners(int column) const {
        CCorners corners;
        VU32 fractionX;
        VU32 fractionY;
        VI64 low;
        VI64 high;
        Offsets(column, low, high, fractionX, fractionY);
        const CGroupOffsets offsets(low, high);
        FetchAhead<3>(m_pixels.Origin(), offsets, m_ahead);
        GatherCorners(m_pixels.Origin(), offsets, corners);
        corners.fx = hn::Mul(hn::ConvertTo(df32, hn::BitCast(di32, fractionX)), hn::Set(df32, 0x1p-24F));
        corners.fy = hn::Mul(hn::ConvertTo(df32, hn::BitCast(di32, fractionY)), hn::Set(df32, 0x1p-24F));
        corners.nearWhole = hn::Or(IsNearWhole(fractionX), IsNearWhole(fractionY));
        return corners;
    }

private:
    /// Within 2^-20 of a whole number, for a fraction of 24 bits.
    static HWY_INLINE MU32 IsNearWhole(VU32 fraction) {
        const VU32 shifted = hn::And(hn::Add(fraction, hn::Set(du32, 16U)), hn::Set(du32, 0xffffffU));
        return hn::RebindMask(du32, hn::Lt(hn::BitCast(di32, shifted), hn::Set(di32, 32)));
    }

    /// Byte offsets of the two halves of a group, and fractions of 24 bits.
    HWY_INLINE void Offsets(int column, VI64& low, VI64& high, VU32& fractionX, VU32& fractionY) const {
        constexpr int drop = CSourceMapping::fractionBits - 24;
        const std::size_t half = hn::Lanes(di64);
        const VI64 startX = hn::Set(di64, m_storedX.At(column));
        const VI64 startY = hn::Set(di64, m_y.At(column));
        const VI64 lowX = hn::Add(startX, hn::LoadU(di64, m_steps.x.data()));
        const VI64 highX = hn::Add(startX, hn::LoadU(di64, m_steps.x.data() + half));
        const VI64 lowY = hn::Add(startY, hn::LoadU(di64, m_steps.y.data()));
        const VI64 highY = hn::Add(startY, hn::LoadU(di64, m_steps.y.data() + half));
        const auto fraction = [](VI64 lower, VI64 upper) HWY_ATTR {
            const VU32 bits =
                hn::ConcatEven(du32, hn::BitCast(du32, hn::ShiftRight<drop>(hn::BitCast(du64, upper))),
                               hn::BitCast(du32, hn::ShiftRight<drop>(hn::BitCast(du64, lower))));
            return hn::And(bits, hn::Set(du32, 0xffffffU));
        };
        fractionX = fraction(lowX, highX);
        fractionY = fraction(lowY, highY);
        constexpr int whole = CSourceMapping::fractionBits;
        low = ByteOffsets(hn::ShiftRight<whole>(lowX), hn::ShiftRight<whole>(lowY), m_pixels);
        high = ByteOffsets(hn::ShiftRight<whole>(highX), hn::ShiftRight<whole>(highY), m_pixels);
    }

    const CStripedPixels& m_pixels;
    int m_width;
    int m_height;
    CFixedLine m_storedX;
    CFixedLine m_y;
    std::ptrdiff_t m_ahead;
    const CLaneSteps& m_steps;
};

/// Points of a row that is not rotated, from the table of columns; exact.
class CTablePoints {
public:
    explicit CTablePoints(const CRowWork& work)
        : m_table(*work.columns),
          m_y(work.sourceY),
          m_fy(static_cast<float>(work.sourceFraction)),
          m_row(work.source.Pixels().Origin() + std::ptrdiff_t{work.sourceY} * CStripedPixels::rowPitch),
          m_ahead(work.aheadBytes) {}

    int XAt(int column) const { return m_table.x[static_cast<std::size_t>(column)]; }
    int YAt(int) const { return m_y; }

    HWY_INLINE void Nearest(int column, VU32& sample, MU32& doubtful) const {
        doubtful = hn::FirstN(du32, 0);
        if (m_table.isConsecutive)
            sample = hn::LoadU(du32, At(column));
        else
            sample = m_table.isDense ? Spread(column, At(column)) : GatherPixels(m_row, Offsets(column));
    }

    HWY_INLINE CCorners Corners(int column) const {
        CCorners corners;
        const auto index = static_cast<std::size_t>(column);
        if (m_table.isConsecutive) {
            const std::uint32_t* at = At(column);
            corners.p = hn::LoadU(du32, at);
            corners.q = hn::LoadU(du32, at + 1);
            corners.r = hn::LoadU(du32, at + CStripedPixels::rowPitch);
            corners.s = hn::LoadU(du32, at + CStripedPixels::rowPitch + 1);
        } else if (m_table.isDense) {
            const std::uint32_t* at = At(column);
            corners.p = Spread(column, at);
            corners.q = Spread(column, at + 1);
            corners.r = Spread(column, at + CStripedPixels::rowPitch);
            corners.s = Spread(column, at + CStripedPixels::rowPitch + 1);
            FetchRow(at, m_ahead);
        } else {
            const CGroupOffsets offsets = Offsets(column);
            FetchAhead<15>(m_row, offsets, m_ahead);
            GatherCorners(m_row, offsets, corners);
        }
        corners.fx = hn::LoadU(df32, m_table.roughFraction.data() + index);
        corners.fy = hn::Set(df32, m_fy);
        corners.nearWhole = hn::FirstN(du32, 0);
        return corners;
    }

private:
    const std::uint32_t* At(int column) const {
        return m_row + m_table.byteOffset[static_cast<std::size_t>(column)] / 4;
    }
    /// In a dense row the pixels of a group are among as many neighbours, which are moved to their lanes.
    HWY_INLINE VU32 Spread(int column, const std::uint32_t* neighbours) const {
        const std::int32_t* x = m_table.x.data() + static_cast<std::size_t>(column);
        const auto lanes = hn::IndicesFromVec(du32, hn::Sub(hn::LoadU(di32, x), hn::Set(di32, *x)));
        return hn::TableLookupLanes(hn::LoadU(du32, neighbours), lanes);
    }
    HWY_INLINE CGroupOffsets Offsets(int column) const {
        const std::int64_t* offsets = m_table.byteOffset.data() + static_cast<std::size_t>(column);
        return {hn::LoadU(di64, offsets), hn::LoadU(di64, offsets + hn::Lanes(di64))};
    }

    const CColumnTable& m_table;
    int m_y;
    float m_fy;
    const std::uint32_t* m_row;
    std::ptrdiff_t m_ahead;
};

// ---- sampling

HWY_INLINE CExactCorners ExactCorners(const CRowWork& work, int column, int half, int count) {
    const hn::Mask<DI64> mask = HalfMask(half, count);
    const CExactPoints points(work, column + half * GroupSize() / 2, mask);
    HWY_ALIGN std::int64_t offsets[CPixelRow::slack];
    const CStripedPixels& pixels = work.source.Pixels();
    const VI64 storedX = hn::Add(points.x, hn::Set(di64, std::int64_t{CStripedPixels::shift}));
    // The other lanes read a pixel that is there.
    const std::int64_t firstPixel = pixels.OffsetOf(pixels.Area().x, pixels.Area().y) * std::int64_t{4};
    const VI64 spare = hn::Set(di64, firstPixel);
    hn::Store(hn::IfThenElse(mask, ByteOffsets(storedX, points.y, pixels), spare), di64, offsets);
    const std::uint32_t* origin = pixels.Origin();
    return {GatherPairs(origin, offsets), GatherPairs(origin + CStripedPixels::rowPitch, offsets), points.fx,
            points.fy};
}

template<int shift>
HWY_INLINE VF64 ExactChannel(VU64 pixels) {
    // A small whole number in the low bits of 2^52.
    const VU64 bits = hn::OrAnd(hn::Set(du64, 0x4330000000000000U), hn::ShiftRight<shift>(pixels),
                                hn::Set(du64, std::uint64_t{0xff}));
    return hn::Sub(hn::BitCast(df64, bits), hn::Set(df64, 0x1p52));
}

template<int shift>
HWY_INLINE VHalfI32 ExactInterpolation(const CExactCorners& corners) {
    const VF64 p = ExactChannel<shift>(corners.pq);
    const VF64 q = ExactChannel<shift + 32>(corners.pq);
    const VF64 r = ExactChannel<shift>(corners.rs);
    const VF64 s = ExactChannel<shift + 32>(corners.rs);
    VF64 value = hn::Add(p, hn::Mul(hn::Sub(q, p), corners.fx));
    value = hn::Add(value, hn::Mul(hn::Sub(r, p), corners.fy));
    const VF64 twist = hn::Add(hn::Sub(hn::Sub(s, q), r), p);
    value = hn::Add(value, hn::Mul(hn::Mul(twist, corners.fx), corners.fy));
    return hn::ShiftLeft<shift>(hn::DemoteTo(dhalf, value));
}

/// A group by the formula itself, in double precision.
HWY_INLINE VU32 ExactGroup(const CRowWork& work, int column, int count) {
    const auto sampleHalf = [&](int half) HWY_ATTR {
        const CExactCorners corners = ExactCorners(work, column, half, count);
        return hn::Or(hn::Or(ExactInterpolation<0>(corners), ExactInterpolation<8>(corners)),
                      hn::Or(ExactInterpolation<16>(corners), ExactInterpolation<24>(corners)));
    };
    const VHalfI32 low = sampleHalf(0);
    return hn::BitCast(du32, hn::Combine(di32, sampleHalf(1), low));
}

/// The nearest pixels of a group by the formula itself.
HWY_INLINE VU32 ExactNearestGroup(const CRowWork& work, int column, int count) {
    const VU64 low = ExactCorners(work, column, 0, count).pq;
    const VU64 high = ExactCorners(work, column, 1, count).pq;
    return hn::ConcatEven(du32, hn::BitCast(du32, high), hn::BitCast(du32, low));
}

// Rough interpolation works on values times 2^14, so that conversion to integers leaves 14 bits of fraction.
inline constexpr int roughBits = 14;
inline constexpr std::uint32_t roughMask = (1U << roughBits) - 1;

/// A plane times 2^14, plus 2^37: a small whole number in the low bits of a float of that size.
template<int shift>
HWY_INLINE VF32 Channel(VU32 pixels) {
    return hn::BitCast(df32,
                       hn::OrAnd(hn::Set(du32, 0x52000000U), hn::ShiftRight<shift>(pixels), hn::Set(du32, 0xffU)));
}

/// Interpolation of one plane in single precision. In units of a byte's value it is off by less than 2^-13: 2^-17
/// for each of five roundings and 255 * 2^-23.4 for each of the fractions. Where all four pixels are equal it is
/// exact. Returned is the value times 2^14, rounded, plus 3, in the low bits: one that is too close to a whole
/// number to be trusted has less than 6 in its fraction.
template<int shift>
HWY_INLINE VU32 RoughInterpolation(const CCorners& corners) {
    const VF32 p = Channel<shift>(corners.p);
    const VF32 r = Channel<shift>(corners.r);
    const VF32 two37 = hn::Set(df32, 0x1p37F);
    const VF32 lower = hn::MulAdd(hn::Sub(Channel<shift>(corners.q), p), corners.fx, hn::Sub(p, two37));
    const VF32 upper = hn::MulAdd(hn::Sub(Channel<shift>(corners.s), r), corners.fx, hn::Sub(r, two37));
    const VF32 value = hn::MulAdd(hn::Sub(upper, lower), corners.fy, lower);
    return hn::BitCast(du32, hn::Add(value, hn::Set(df32, 0x1p23F + 3)));
}

HWY_INLINE VU32 RoughFraction(VU32 value) {
    return hn::And(value, hn::Set(du32, roughMask));
}

HWY_INLINE MU32 IsSuspicious(VU32 fraction) {
    return hn::RebindMask(du32, hn::Lt(hn::BitCast(di32, fraction), hn::Set(di32, 6)));
}

/// Lanes where a plane cannot be trusted: too close to a whole number, unless its four pixels are equal.
template<int shift>
HWY_INLINE MU32 IsDoubtful(VU32 value, VU32 difference) {
    const VU32 planeDiffers = hn::And(difference, hn::Set(du32, 0xffU << shift));
    return hn::And(IsSuspicious(RoughFraction(value)), hn::Ne(planeDiffers, hn::Zero(du32)));
}

/// The byte of a rough value, in its place in a pixel.
template<int shift>
HWY_INLINE VU32 InPlace(VU32 value) {
    if constexpr (shift > roughBits)
        return hn::And(hn::ShiftLeft<shift - roughBits>(value), hn::Set(du32, 0xffU << shift));
    else
        return hn::And(hn::ShiftRight<roughBits - shift>(value), hn::Set(du32, 0xffU << shift));
}

/// Whether all that a group is interpolated between is of one colour, so that each sample is that colour.
HWY_INLINE bool IsUniform(const CCorners& corners) {
    const VU32 first = hn::Set(du32, hn::GetLane(corners.p));
    const VU32 difference = hn::Or(hn::Or(hn::Xor(corners.p, first), hn::Xor(corners.q, first)),
                                   hn::Or(hn::Xor(corners.r, first), hn::Xor(corners.s, first)));
    return hn::AllTrue(du32, hn::Eq(difference, hn::Zero(du32))) && hn::AllFalse(du32, corners.nearWhole);
}

/// Samples of a group by estimate; `doubtful` gets the lanes that have to be done by the formula.
template<bool opaque>
HWY_INLINE VU32 RoughGroup(const CCorners& corners, bool isExact, MU32& doubtful) {
    const VU32 blue = RoughInterpolation<0>(corners);
    const VU32 green = RoughInterpolation<8>(corners);
    const VU32 red = RoughInterpolation<16>(corners);
    VU32 alpha = blue;
    VU32 sample = hn::Or(hn::Or(InPlace<0>(blue), InPlace<8>(green)), InPlace<16>(red));
    VU32 least = hn::Min(hn::Min(RoughFraction(blue), RoughFraction(green)), RoughFraction(red));
    if constexpr (opaque) {
        sample = hn::Or(sample, hn::Set(du32, 0xff000000U));
    } else {
        alpha = RoughInterpolation<24>(corners);
        sample = hn::Or(sample, InPlace<24>(alpha));
        least = hn::Min(least, RoughFraction(alpha));
    }
    doubtful = hn::FirstN(du32, 0);
    if (isExact || hn::AllFalse(du32, IsSuspicious(least)))
        return sample;
    const VU32 difference =
        hn::Or(hn::Or(hn::Xor(corners.p, corners.q), hn::Xor(corners.p, corners.r)), hn::Xor(corners.p, corners.s));
    // Beside a whole coordinate the line may have found four equal pixels next to the right ones.
    doubtful = hn::And(corners.nearWhole, IsSuspicious(least));
    doubtful = hn::Or(doubtful, IsDoubtful<0>(blue, difference));
    doubtful = hn::Or(doubtful, IsDoubtful<8>(green, difference));
    doubtful = hn::Or(doubtful, IsDoubtful<16>(red, difference));
    if constexpr (!opaque)
        doubtful = hn::Or(doubtful, IsDoubtful<24>(alpha, difference));
    return sample;
}

} // namespace
} // namespace velmor::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
