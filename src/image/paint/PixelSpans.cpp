#include "image/paint/PixelSpans.h"

#include <algorithm>
#include <bit>

namespace velmor {

namespace {

std::span<std::uint8_t> MaskRow(CCelImg& cel, int y) {
    const std::size_t stride = static_cast<std::size_t>(cel.StrideBits() / 8);
    return cel.LineMask().subspan(static_cast<std::size_t>(y) * stride, stride);
}

// Those bits of a byte of the mask that stand for columns x to endX - 1; its first one stands for byteX.
int BitsBetween(int byteX, int x, int endX) {
    return 0xff >> std::max(x - byteX, 0) & 0xff << std::max(byteX + 8 - endX, 0);
}

} // namespace

void InkSpan(CCelImg& cel, int y, int x, int endX, CPaintBounds& bounds) {
    if (endX <= x)
        return;
    const auto row = MaskRow(cel, y);
    for (int byteX = x - x % 8; byteX < endX; byteX += 8) {
        std::uint8_t& byte = row[static_cast<std::size_t>(byteX / 8)];
        byte = static_cast<std::uint8_t>(byte | BitsBetween(byteX, x, endX));
    }
    for (const Channel channel : {Channel::Red, Channel::Green, Channel::Blue})
        std::fill_n(cel.PlaneOf(channel).data() + cel.IndexOf(x, y), endX - x, std::uint8_t{0});
    std::fill_n(cel.PlaneOf(Channel::Alpha).data() + cel.IndexOf(x, y), endX - x, std::uint8_t{255});
    bounds.AddSpan(y, x, endX);
}

void TreatLines(CCelImg& cel, int y, int x, int endX, BrushAction action, CColor color, CPaintBounds& bounds) {
    const auto row = MaskRow(cel, y);
    for (int byteX = x - x % 8; byteX < endX; byteX += 8) {
        std::uint8_t& byte = row[static_cast<std::size_t>(byteX / 8)];
        if (byte == 0)
            continue;
        int bits = byte & BitsBetween(byteX, x, endX);
        if (action == BrushAction::Erase)
            byte = static_cast<std::uint8_t>(byte & ~bits);
        for (; bits != 0; bits &= bits - 1) {
            const int lineX = byteX + 7 - std::countr_zero(static_cast<unsigned>(bits));
            cel.SetColorAt(lineX, y, color);
            bounds.AddSpan(y, lineX, lineX + 1);
        }
    }
}

std::uint8_t SoftAlpha(int alpha, int weight, BrushAction action) {
    const int changed =
        action == BrushAction::Erase ? alpha * (255 - weight) / 255 : alpha + (255 - alpha) * weight / 255;
    return static_cast<std::uint8_t>(changed);
}

} // namespace velmor
