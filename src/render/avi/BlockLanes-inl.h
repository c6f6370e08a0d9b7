// Blocks side by side in vectors, a block a lane, for one instruction set; included once for each by the fits.

#if defined(VELMOR_BLOCK_LANES_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef VELMOR_BLOCK_LANES_INL_H
#undef VELMOR_BLOCK_LANES_INL_H
#else
#define VELMOR_BLOCK_LANES_INL_H
#endif

#include "render/avi/BlockRow.h"

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace velmor::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

inline constexpr std::size_t mostLanes = 16;
static_assert(mostLanes <= CBlockRow::slack);

using DReal = hn::CappedTag<float, mostLanes>;
using DInt = hn::RebindToSigned<DReal>;
using DBits = hn::RebindToUnsigned<DReal>;
using VReal = hn::Vec<DReal>;
using VInt = hn::Vec<DInt>;
using VBits = hn::Vec<DBits>;
using MReal = hn::Mask<DReal>;
using MInt = hn::Mask<DInt>;

inline constexpr DReal dReal;
inline constexpr DInt dInt;
inline constexpr DBits dBits;

HWY_INLINE VReal Real(float value) {
    return hn::Set(dReal, value);
}

struct CColorLanes {
    VReal blue;
    VReal green;
    VReal red;
};

HWY_INLINE VReal Dot(const CColorLanes& a, const CColorLanes& b) {
    return a.blue * b.blue + a.green * b.green + a.red * b.red;
}

/// Pixel y x 4 + x of each block. What is a whole number below 2^24, as these, their sums, and their sums of
/// products are, single precision holds exactly.
struct CBlockLanes {
    CColorLanes pixels[16];
};
static_assert(16 * (16 * 255 * 255) < 1 << 24);

template<int x>
HWY_INLINE VReal PixelOf(VBits fourPixels) {
    return hn::ConvertTo(dReal, hn::BitCast(dInt, hn::ShiftRight<8 * x>(fourPixels) & hn::Set(dBits, 0xffU)));
}

HWY_INLINE CBlockLanes TakeBlocks(const CBlockRow& row, const std::int32_t* blocks) {
    const VInt numbers = hn::LoadU(dInt, blocks);
    CBlockLanes lanes;
    for (std::size_t y = 0; y < 4; ++y) {
        const auto fourPixels = [&](std::size_t channel) HWY_ATTR {
            return hn::GatherIndex(dBits, row.rows[y].channels[channel].data(), numbers);
        };
        const VBits blue = fourPixels(0);
        const VBits green = fourPixels(1);
        const VBits red = fourPixels(2);
        CColorLanes* pixels = lanes.pixels + 4 * y;
        pixels[0] = {PixelOf<0>(blue), PixelOf<0>(green), PixelOf<0>(red)};
        pixels[1] = {PixelOf<1>(blue), PixelOf<1>(green), PixelOf<1>(red)};
        pixels[2] = {PixelOf<2>(blue), PixelOf<2>(green), PixelOf<2>(red)};
        pixels[3] = {PixelOf<3>(blue), PixelOf<3>(green), PixelOf<3>(red)};
    }
    return lanes;
}

/// Some of each block's pixels: how many, their sum, and their flags, bit y x 4 + x for a pixel.
struct CGroupLanes {
    VReal count;
    CColorLanes sum;
    VReal flags;

    HWY_INLINE void Add(MReal isMember, const CColorLanes& pixel, float flag) {
        count = count + hn::IfThenElseZero(isMember, Real(1));
        sum.blue = sum.blue + hn::IfThenElseZero(isMember, pixel.blue);
        sum.green = sum.green + hn::IfThenElseZero(isMember, pixel.green);
        sum.red = sum.red + hn::IfThenElseZero(isMember, pixel.red);
        flags = flags + hn::IfThenElseZero(isMember, Real(flag));
    }
};

HWY_INLINE CGroupLanes EmptyGroup() {
    const VReal zero = hn::Zero(dReal);
    return {zero, {zero, zero, zero}, zero};
}

/// The pixels of the first group that are not of the second, which is a part of it.
HWY_INLINE CGroupLanes operator-(const CGroupLanes& all, const CGroupLanes& part) {
    return {all.count - part.count,
            {all.sum.blue - part.sum.blue, all.sum.green - part.sum.green, all.sum.red - part.sum.red},
            all.flags - part.flags};
}

/// The group's mean in 5 bits a channel.
HWY_INLINE VInt WordOf(const CGroupLanes& group) {
    const VReal scale = Real(31.0f / 255.0f) / group.count;
    const auto rounded = [&](VReal sum) HWY_ATTR { return hn::ConvertTo(dInt, sum * scale + Real(0.5f)); };
    return hn::ShiftLeft<10>(rounded(group.sum.red)) | hn::ShiftLeft<5>(rounded(group.sum.green)) |
           rounded(group.sum.blue);
}

} // namespace
} // namespace velmor::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
