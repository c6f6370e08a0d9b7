#pragma once

#include "image/CelImg.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>

namespace velmor {

// A row of a line mask as 64-bit words: pixel x is bit 63 - x mod 64 of word x / 64, the order of the mask's bytes,
// so that counting leading zeros goes to the right. What works on whole lines of pixels reads the mask this way.

using MaskWord = std::uint64_t;
constexpr int maskWordBits = 64;

/// Words of a row, with at least one bit beyond the last pixel.
constexpr std::size_t MaskWordsOf(int width) {
    return static_cast<std::size_t>(width / maskWordBits) + 1;
}

/// The bits of a word from bit x to the right, x being 0 to 64.
constexpr MaskWord MaskFrom(int x) {
    return x < maskWordBits ? ~MaskWord{0} >> x : 0;
}

/// The bytes of a word in reverse order. Compilers know this form and make one instruction of it.
constexpr MaskWord ReversedBytes(MaskWord word) {
    return word << 56 | (word & 0xff00) << 40 | (word & 0xff0000) << 24 | (word & 0xff000000) << 8 |
           (word >> 8 & 0xff000000) | (word >> 24 & 0xff0000) | (word >> 40 & 0xff00) | word >> 56;
}

/// The line mask of a cel, in the layout of CCelImg. A view.
struct CLineMask {
    std::span<const std::uint8_t> bytes;
    CSize size; ///< of the cel
};

inline CLineMask LineMaskOf(const CCelImg& cel) {
    return {cel.LineMask(), {cel.Width(), cel.Height()}};
}

/// Reads row y of a cel into MaskWordsOf(width) words; bits beyond the last pixel are clear.
void LoadMaskRow(const CLineMask& mask, int y, std::span<MaskWord> words);
inline void LoadMaskRow(const CCelImg& cel, int y, std::span<MaskWord> words) {
    LoadMaskRow(LineMaskOf(cel), y, words);
}
/// Writes words as LoadMaskRow() reads them; the padding of the mask keeps its bits.
void StoreMaskRow(CCelImg& cel, int y, std::span<const MaskWord> words);

/// Calls visit(x) for every set bit, from left to right.
template<class Visit>
void ForEachBit(MaskWord bits, int firstX, Visit visit) {
    while (bits != 0) {
        const int bit = std::countl_zero(bits);
        visit(firstX + bit);
        bits &= MaskFrom(bit + 1);
    }
}

} // namespace velmor
