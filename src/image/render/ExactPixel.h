#pragma once

#include <cstddef>
#include <cstdint>

namespace velmor {

/// The laid-down interpolation of one plane between the pixels P (ix, iy), Q (ix + 1, iy), R (ix, iy + 1) and
/// S (ix + 1, iy + 1), evaluated from left to right.
inline std::uint32_t Interpolate(int p, int q, int r, int s, double fx, double fy) {
    const double value = p + (q - p) * fx + (r - p) * fy + (s - q - r + p) * fx * fy;
    return static_cast<std::uint32_t>(static_cast<int>(value)) & 0xff;
}

constexpr int ByteOf(std::uint32_t pixel, int shift) {
    return static_cast<int>(pixel >> shift & 0xff);
}

/// `pixel` blended over `below` with `alpha`; the high byte is without meaning.
inline std::uint32_t BlendPixel(std::uint32_t pixel, std::uint32_t below, int alpha) {
    std::uint32_t result = 0;
    for (int shift = 0; shift < 24; shift += 8) {
        const int blended = (ByteOf(pixel, shift) * alpha + ByteOf(below, shift) * (255 - alpha)) / 255;
        result |= static_cast<std::uint32_t>(blended) << shift;
    }
    return result;
}

} // namespace velmor
