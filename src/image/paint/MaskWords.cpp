#include "image/paint/MaskWords.h"

#include <algorithm>
#include <cstring>

namespace velmor {

namespace {

constexpr std::size_t wordBytes = sizeof(MaskWord);

std::size_t RowBytes(int width) {
    return static_cast<std::size_t>(StrideBitsOf(width) / 8);
}

MaskWord LoadWord(const std::uint8_t* bytes) {
    MaskWord word;
    std::memcpy(&word, bytes, wordBytes);
    return std::endian::native == std::endian::big ? word : ReversedBytes(word);
}

} // namespace

void LoadMaskRow(const CLineMask& mask, int y, std::span<MaskWord> words) {
    const std::size_t rowBytes = RowBytes(mask.size.width);
    const auto row = mask.bytes.subspan(static_cast<std::size_t>(y) * rowBytes, rowBytes);
    const std::size_t whole = std::min(row.size() / wordBytes, words.size());
    std::size_t i = 0;
    for (; i < whole; ++i)
        words[i] = LoadWord(row.data() + i * wordBytes);
    for (; i < words.size(); ++i) {
        words[i] = 0;
        for (std::size_t at = i * wordBytes; at < row.size(); ++at)
            words[i] |= MaskWord{row[at]} << (maskWordBits - 8 - 8 * static_cast<int>(at % wordBytes));
    }
    words.back() &= ~MaskFrom(mask.size.width % maskWordBits);
}

void StoreMaskRow(CCelImg& cel, int y, std::span<const MaskWord> words) {
    const std::size_t rowBytes = RowBytes(cel.Width());
    const auto row = cel.LineMask().subspan(static_cast<std::size_t>(y) * rowBytes, rowBytes);
    const auto whole = static_cast<std::size_t>(cel.Width() / 8);
    const auto byteOf = [&](std::size_t at) {
        return static_cast<std::uint8_t>(words[at / wordBytes] >>
                                         (maskWordBits - 8 - 8 * static_cast<int>(at % wordBytes)));
    };
    for (std::size_t at = 0; at < whole; ++at)
        row[at] = byteOf(at);
    if (cel.Width() % 8 != 0) {
        const int padding = 0xff >> (cel.Width() % 8);
        row[whole] = static_cast<std::uint8_t>(byteOf(whole) | (row[whole] & padding));
    }
}

} // namespace velmor
