#pragma once

#include <cstdint>

namespace velmor {

/// A colour as palettes and planes hold it. Alpha 255 is opaque, 0 fully transparent.
struct CColor {
    std::uint8_t blue = 0;
    std::uint8_t green = 0;
    std::uint8_t red = 0;
    std::uint8_t alpha = 255;

    bool operator==(const CColor&) const = default;
};

/// An RGB value with red in the low byte, then green, then blue, high byte 0: the way the files and settings keep
/// background and grid colours.
using ColorRef = std::uint32_t;

constexpr ColorRef MakeColorRef(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    return static_cast<ColorRef>(red) | static_cast<ColorRef>(green) << 8 | static_cast<ColorRef>(blue) << 16;
}
constexpr std::uint8_t RedOf(ColorRef color) {
    return static_cast<std::uint8_t>(color & 0xff);
}
constexpr std::uint8_t GreenOf(ColorRef color) {
    return static_cast<std::uint8_t>(color >> 8 & 0xff);
}
constexpr std::uint8_t BlueOf(ColorRef color) {
    return static_cast<std::uint8_t>(color >> 16 & 0xff);
}

} // namespace velmor
