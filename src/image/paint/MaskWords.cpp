#include "image/paint/MaskWords.h"

#include <cstring>

namespace velmor {

namespace {

constexpr std::size_t wordBytes = sizeof(MaskWord);

std::size_t RowBytes(const CCelImg& cel) {
    return static_cast<std::size_t>(cel.StrideBits() / 8);
}

MaskWord LoadWord(const std::uint8_t* bytes) {
    MaskWord word;
    std::memcpy(&word, bytes, wordBytes);
    return std::endian::native == std::endian::big ? word : ReversedBytes(word);
}

} // namespace

void LoadMaskRow(const CCelImg& cel, int y, std::span<MaskWord> words) {
    const auto row = cel.LineMask().subspan(static_cast<std::size_t>(y) * RowBytes(cel), RowBytes(cel));
    std::size_t i = 0;
    for (; (i + 1) * wordBytes <= row.size() && i < words.size(); ++i)
        words[i] = LoadWord(&row[i * wordBytes]);
    for (; i < words.size(); ++i) {
        words[i] = 0;
        for (std::size_t at = i * wordBytes; at < row.size(); ++at)
            words[i] |= MaskWord{row[at]} << (maskWordBits - 8 - 8 * static_cast<int>(at % wordBytes));
    }
    words.back() &= ~MaskFrom(cel.Width() % maskWordBits);
}

void StoreMaskRow(CCelImg& cel, int y, std::span<const MaskWord> words) {
    const auto row = cel.LineMask().subspan(static_cast<std::size_t>(y) * RowBytes(cel), RowBytes(cel));
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
