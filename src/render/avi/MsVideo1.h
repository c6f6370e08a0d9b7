#pragma once

#include "image/Color.h"

#include <cstdint>
#include <span>
#include <vector>

namespace velmor {

/// Width and height that the codec stores: the next multiple of 4.
constexpr int CodedWidthOf(int width) {
    return (width + 3) / 4 * 4;
}
constexpr int CodedHeightOf(int height) {
    return (height + 3) / 4 * 4;
}

constexpr int bestMsVideo1Quality = 10000;

/// Encodes one frame as Microsoft Video 1, 16-bit, a key frame. `frame` is width x height x 3 bytes, blue green
/// red, bottom row first. Rows missing to CodedHeightOf(height) are added at the bottom, columns missing to
/// CodedWidthOf(width) at the right, both in `background`. `quality` 0 to 10000: higher keeps more colours.
/// Replaces `encoded`.
void EncodeMsVideo1(std::span<const std::uint8_t> frame, int width, int height, int quality, ColorRef background,
                    std::vector<std::uint8_t>& encoded);

} // namespace velmor
