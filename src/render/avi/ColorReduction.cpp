#include "render/avi/ColorReduction.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "render/avi/ColorReduction.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace velmor::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

using DWord = hn::CappedTag<Word, CBlockRow::slack>;
using DByte = hn::Rebind<std::uint8_t, DWord>;
using VWord = hn::Vec<DWord>;
using VByte = hn::Vec<DByte>;

constexpr DWord dWord;
constexpr DByte dByte;

constexpr bool RoundsToNearest() {
    for (int value = 0; value < 256; ++value)
        if ((value * 249 + 1014) >> 11 != (value * 31 * 2 + 255) / 510)
            return false;
    return true;
}
static_assert(RoundsToNearest());

HWY_INLINE VWord FiveBitsOf(VByte value) {
    const VWord product = hn::PromoteTo(dWord, value) * hn::Set(dWord, Word{249});
    return hn::ShiftRight<11>(product + hn::Set(dWord, Word{1014}));
}

void SplitPixels(const std::uint8_t* pixels, CBlockRow::CPixels& row, std::size_t count) {
    std::array<std::uint8_t*, 3> channels;
    for (std::size_t channel = 0; channel < 3; ++channel)
        channels[channel] = reinterpret_cast<std::uint8_t*>(row.channels[channel].data());
    for (std::size_t x = 0; x < count; x += hn::Lanes(dWord)) {
        VByte blue;
        VByte green;
        VByte red;
        hn::LoadInterleaved3(dByte, pixels + 3 * x, blue, green, red);
        hn::StoreU(blue, dByte, channels[0] + x);
        hn::StoreU(green, dByte, channels[1] + x);
        hn::StoreU(red, dByte, channels[2] + x);
        const VWord words =
            hn::ShiftLeft<10>(FiveBitsOf(red)) | hn::ShiftLeft<5>(FiveBitsOf(green)) | FiveBitsOf(blue);
        hn::StoreU(words, dWord, row.words.data() + x);
    }
}

void FindWordColors(const CBlockRow& row, CWordColors& colors) {
    const auto number = [](int value) HWY_ATTR { return hn::Set(dWord, static_cast<Word>(value)); };
    for (std::size_t block = 0; block < row.blockCount; block += hn::Lanes(dWord)) {
        VWord words[16]; // one pixel of each block
        for (std::size_t y = 0; y < 4; ++y)
            hn::LoadInterleaved4(dWord, row.rows[y].words.data() + 4 * block, words[4 * y], words[4 * y + 1],
                                 words[4 * y + 2], words[4 * y + 3]);
        VWord least = words[15];
        VWord most = words[15];
        VWord flags = number(0);
        for (int i = 0; i < 15; ++i) {
            least = hn::Min(least, words[i]);
            most = hn::Max(most, words[i]);
            flags = flags | hn::IfThenElseZero(words[i] != words[15], number(1 << i));
        }
        const VWord first = hn::IfThenElse(words[15] == least, most, least);
        VWord counts = hn::IfThenElse(least == most, number(1), number(2));
        for (const VWord word : words)
            counts = hn::IfThenElse(hn::And(word != first, word != words[15]), number(3), counts);
        hn::StoreU(counts, dWord, colors.counts.data() + block);
        hn::StoreU(first, dWord, colors.first.data() + block);
        hn::StoreU(words[15], dWord, colors.second.data() + block);
        hn::StoreU(flags, dWord, colors.flags.data() + block);
    }
}

} // namespace
} // namespace velmor::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace velmor {

HWY_EXPORT(SplitPixels);
HWY_EXPORT(FindWordColors);

void SplitPixels(const std::uint8_t* pixels, CBlockRow::CPixels& row, std::size_t count) {
    HWY_DYNAMIC_DISPATCH(SplitPixels)(pixels, row, count);
}

void FindWordColors(const CBlockRow& row, CWordColors& colors) {
    HWY_DYNAMIC_DISPATCH(FindWordColors)(row, colors);
}

} // namespace velmor

#endif
