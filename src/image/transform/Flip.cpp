#include "image/paint/MaskWords.h"
#include "image/transform/Transforms.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <vector>

namespace velmor {

namespace {

constexpr Channel channels[] = {Channel::Red, Channel::Green, Channel::Blue, Channel::Alpha};

/// Both flips report so.
CStatus NotLoaded() {
    return CStatus::Failure("Internal Error : cel/picture is not loaded in FlipX");
}

std::span<std::uint8_t> PlaneRow(CCelImg& image, Channel channel, int y) {
    return image.PlaneOf(channel).subspan(image.IndexOf(0, y), static_cast<std::size_t>(image.Width()));
}

/// Turns a row of bytes around, eight at a time from both ends.
void ReverseBytes(std::span<std::uint8_t> row) {
    constexpr std::size_t step = sizeof(MaskWord);
    std::size_t begin = 0;
    std::size_t end = row.size();
    for (; begin + 2 * step <= end; begin += step, end -= step) {
        MaskWord left, right;
        std::memcpy(&left, &row[begin], step);
        std::memcpy(&right, &row[end - step], step);
        left = ReversedBytes(left);
        right = ReversedBytes(right);
        std::memcpy(&row[begin], &right, step);
        std::memcpy(&row[end - step], &left, step);
    }
    std::ranges::reverse(row.subspan(begin, end - begin));
}

MaskWord ReversedBits(MaskWord word) {
    constexpr MaskWord ones = 0x5555555555555555, pairs = 0x3333333333333333, nibbles = 0x0f0f0f0f0f0f0f0f;
    word = (word >> 1 & ones) | (word & ones) << 1;
    word = (word >> 2 & pairs) | (word & pairs) << 2;
    word = (word >> 4 & nibbles) | (word & nibbles) << 4;
    return ReversedBytes(word);
}

/// Turns a row of a mask around, so that its last pixel becomes the first.
void ReverseRow(std::vector<MaskWord>& row, int width) {
    std::ranges::reverse(row);
    std::ranges::transform(row, row.begin(), ReversedBits);
    const int padding = static_cast<int>(row.size()) * maskWordBits - width; // 1 to 64
    for (std::size_t i = 0; i < row.size(); ++i) {
        const MaskWord next = i + 1 < row.size() ? row[i + 1] : 0;
        row[i] = padding == maskWordBits ? next : row[i] << padding | next >> (maskWordBits - padding);
    }
}

} // namespace

CStatus FlipX(CCelImg& image) try {
    if (image.GetLoadState() == LoadState::Nothing)
        return NotLoaded();
    std::vector<MaskWord> lines(MaskWordsOf(image.Width()));
    for (int y = 0; y < image.Height(); ++y) {
        for (const Channel channel : channels)
            ReverseBytes(PlaneRow(image, channel, y));
        if (image.LineMask().empty())
            continue;
        LoadMaskRow(image, y, lines);
        ReverseRow(lines, image.Width());
        StoreMaskRow(image, y, lines);
    }
    image.SetModified(true);
    return {};
} catch (const std::bad_alloc&) {
    return CStatus::Failure("Unable to allocate memory for cel!");
}

CStatus FlipY(CCelImg& image) try {
    if (image.GetLoadState() == LoadState::Nothing)
        return NotLoaded();
    std::vector<MaskWord> low(MaskWordsOf(image.Width())), high(low.size());
    for (int y = 0; y < image.Height() / 2; ++y) {
        const int mirrored = image.Height() - 1 - y;
        for (const Channel channel : channels)
            std::ranges::swap_ranges(PlaneRow(image, channel, y), PlaneRow(image, channel, mirrored));
        if (image.LineMask().empty())
            continue;
        LoadMaskRow(image, y, low);
        LoadMaskRow(image, mirrored, high);
        StoreMaskRow(image, y, high);
        StoreMaskRow(image, mirrored, low);
    }
    image.SetModified(true);
    return {};
} catch (const std::bad_alloc&) {
    return CStatus::Failure("Unable to allocate memory for cel!");
}

} // namespace velmor
