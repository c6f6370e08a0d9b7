#include "image/render/PixelPacking.h"

#include "image/render/UniformMap.h"

#include <algorithm>
#include <cstddef>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/render/PixelPacking.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace velmor::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

bool Interleave(const std::uint8_t* blue, const std::uint8_t* green, const std::uint8_t* red,
                const std::uint8_t* alpha, std::size_t count, std::uint32_t* pixels) {
    const hn::ScalableTag<std::uint8_t> du8;
    const std::size_t lanes = hn::Lanes(du8);
    auto* bytes = reinterpret_cast<std::uint8_t*>(pixels);
    auto commonAlpha = hn::Set(du8, std::uint8_t{255});
    std::size_t at = 0;
    for (; at + lanes <= count; at += lanes) {
        const auto alphas = hn::LoadU(du8, alpha + at);
        commonAlpha = hn::And(commonAlpha, alphas);
        hn::StoreInterleaved4(hn::LoadU(du8, blue + at), hn::LoadU(du8, green + at), hn::LoadU(du8, red + at),
                              alphas, du8, bytes + 4 * at);
    }
    bool opaque = hn::AllTrue(du8, hn::Eq(commonAlpha, hn::Set(du8, std::uint8_t{255})));
#if HWY_TARGET != HWY_SCALAR
    const hn::CappedTag<std::uint8_t, 16> few;
    for (; at + hn::Lanes(few) <= count; at += hn::Lanes(few)) {
        const auto alphas = hn::LoadU(few, alpha + at);
        opaque &= hn::AllTrue(few, hn::Eq(alphas, hn::Set(few, std::uint8_t{255})));
        hn::StoreInterleaved4(hn::LoadU(few, blue + at), hn::LoadU(few, green + at), hn::LoadU(few, red + at),
                              alphas, few, bytes + 4 * at);
    }
#endif
    for (; at < count; ++at) {
        opaque &= alpha[at] == 255;
        pixels[at] = static_cast<std::uint32_t>(blue[at]) | static_cast<std::uint32_t>(green[at]) << 8 |
                     static_cast<std::uint32_t>(red[at]) << 16 | static_cast<std::uint32_t>(alpha[at]) << 24;
    }
    return opaque;
}

/// In a table of byte positions: a zero.
constexpr std::uint8_t skip = 0x80;

void Unpack(const std::uint8_t* bytes, int count, std::uint32_t* pixels) {
    std::ptrdiff_t at = 0;
#if HWY_TARGET != HWY_SCALAR
    const hn::CappedTag<std::uint8_t, 16> du8;
    HWY_ALIGN static constexpr std::uint8_t spread[16] = {0, 1, 2, skip, 3, 4,  5,  skip,
                                                          6, 7, 8, skip, 9, 10, 11, skip};
    const auto order = hn::Load(du8, spread);
    // 4 pixels a step; a step reads 16 bytes.
    for (; at + 6 <= count; at += 4)
        hn::StoreU(hn::TableLookupBytesOr0(hn::LoadU(du8, bytes + 3 * at), order), du8,
                   reinterpret_cast<std::uint8_t*>(pixels + at));
#endif
    for (; at < count; ++at) {
        const std::uint8_t* from = bytes + 3 * at;
        pixels[at] = static_cast<std::uint32_t>(from[0]) | static_cast<std::uint32_t>(from[1]) << 8 |
                     static_cast<std::uint32_t>(from[2]) << 16;
    }
}

void Pack(const std::uint32_t* pixels, int count, std::uint8_t* bytes) {
    std::ptrdiff_t at = 0;
#if HWY_TARGET != HWY_SCALAR
    const hn::CappedTag<std::uint8_t, 16> du8;
    HWY_ALIGN static constexpr std::uint8_t gather[16] = {0,  1,  2,  4,  5,    6,    8,    9,
                                                          10, 12, 13, 14, skip, skip, skip, skip};
    const auto order = hn::Load(du8, gather);
    // 4 pixels a step; a step writes 16 bytes, the last 4 of which the next one overwrites.
    for (; at + 6 <= count; at += 4) {
        const auto four = hn::LoadU(du8, reinterpret_cast<const std::uint8_t*>(pixels + at));
        hn::StoreU(hn::TableLookupBytesOr0(four, order), du8, bytes + 3 * at);
    }
#endif
    for (; at < count; ++at)
        for (int shift = 0; shift < 24; shift += 8)
            *(bytes + 3 * at + shift / 8) = static_cast<std::uint8_t>(pixels[at] >> shift);
}

// Of a tile is looked at which bits differ from its first pixel anywhere, which occur, and which all pixels have.

TileColor ColorOfWholeTile(const std::uint32_t* pixels, std::ptrdiff_t pitch, int rows) {
    const hn::CappedTag<std::uint32_t, CUniformMap::tileSide> d;
    const auto first = hn::Set(d, pixels[0]);
    auto differing = hn::Zero(d);
    auto occurring = hn::Zero(d);
    auto common = hn::Set(d, ~std::uint32_t{0});
    for (int y = 0; y < rows; ++y)
        for (std::size_t x = 0; x < CUniformMap::tileSide; x += hn::Lanes(d)) {
            const auto some = hn::LoadU(d, pixels + y * pitch + static_cast<std::ptrdiff_t>(x));
            differing = hn::Or(differing, hn::Xor(some, first));
            occurring = hn::Or(occurring, some);
            common = hn::And(common, some);
        }
    const auto alpha = hn::Set(d, std::uint32_t{0xff000000});
    if (hn::AllTrue(d, hn::Eq(hn::And(occurring, alpha), hn::Zero(d))))
        return 0;
    if (hn::AllTrue(d, hn::Eq(differing, hn::Zero(d))))
        return pixels[0];
    return hn::AllTrue(d, hn::Eq(hn::And(common, alpha), alpha)) ? mixedOpaqueColors : mixedColors;
}

TileColor ColorOfCutTile(const std::uint32_t* pixels, std::ptrdiff_t pitch, int columns, int rows) {
    std::uint32_t differing = 0, occurring = 0, common = ~std::uint32_t{0};
    for (int y = 0; y < rows; ++y)
        for (int x = 0; x < columns; ++x) {
            const std::uint32_t pixel = pixels[y * pitch + x];
            differing |= pixel ^ pixels[0];
            occurring |= pixel;
            common &= pixel;
        }
    if (occurring >> 24 == 0)
        return 0;
    if (differing == 0)
        return pixels[0];
    return common >> 24 == 255 ? mixedOpaqueColors : mixedColors;
}

void TileColors(const std::uint32_t* pixels, std::ptrdiff_t pitch, int width, int rows, TileColor* colors) {
    constexpr int side = CUniformMap::tileSide;
    for (int x = 0; x < width; x += side, ++colors)
        *colors = x + side <= width ? ColorOfWholeTile(pixels + x, pitch, rows)
                                    : ColorOfCutTile(pixels + x, pitch, width - x, rows);
}

} // namespace
} // namespace velmor::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace velmor {

HWY_EXPORT(Interleave);
HWY_EXPORT(Unpack);
HWY_EXPORT(Pack);
HWY_EXPORT(TileColors);

bool InterleaveChannels(const CChannelRows& channels, std::size_t count, std::uint32_t* pixels) {
    const auto& [red, green, blue, alpha] = channels;
    return HWY_DYNAMIC_DISPATCH(Interleave)(blue, green, red, alpha, count, pixels);
}

void UnpackPixels(std::span<const std::uint8_t> bytes, std::uint32_t* pixels) {
    HWY_DYNAMIC_DISPATCH(Unpack)(bytes.data(), static_cast<int>(bytes.size() / 3), pixels);
}

void PackPixels(const std::uint32_t* pixels, std::span<std::uint8_t> bytes) {
    HWY_DYNAMIC_DISPATCH(Pack)(pixels, static_cast<int>(bytes.size() / 3), bytes.data());
}

void FindTileColors(const std::uint32_t* pixels, std::ptrdiff_t pitch, CSize size, TileColor* colors) {
    HWY_DYNAMIC_DISPATCH(TileColors)(pixels, pitch, size.width, size.height, colors);
}

} // namespace velmor

#endif
