#pragma once

#include "image/CelImg.h"
#include "image/Geometry.h"

#include <algorithm>
#include <cstdlib>
#include <random>

namespace velmor {

constexpr Channel allChannels[] = {Channel::Red, Channel::Green, Channel::Blue, Channel::Alpha};

inline int RandomBetween(std::mt19937& random, int first, int last) {
    return std::uniform_int_distribution(first, last)(random);
}

inline CColor RandomColor(std::mt19937& random) {
    const auto byte = [&random] { return static_cast<std::uint8_t>(RandomBetween(random, 0, 255)); };
    return {byte(), byte(), byte(), byte()};
}

/// Random bytes in all planes.
inline void Scramble(CCelImg& image, std::mt19937& random) {
    for (const Channel channel : allChannels)
        std::ranges::generate(image.PlaneOf(channel),
                              [&random] { return static_cast<std::uint8_t>(RandomBetween(random, 0, 255)); });
}

/// A cel of random colours without lines; the padding of its line mask is set, as after an inversion.
inline CCelImg RandomCel(std::mt19937& random, int width, int height) {
    CCelImg cel;
    if (!cel.CreateCel(width, height, "random.bit"))
        std::abort();
    static_cast<void>(cel.InvertCel());
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            cel.SetLine(x, y, false);
    Scramble(cel, random);
    return cel;
}

inline CCelImg RandomPicture(std::mt19937& random, int width, int height) {
    CCelImg picture;
    if (!picture.CreatePicture(width, height, "random.rgba"))
        std::abort();
    Scramble(picture, random);
    return picture;
}

/// Makes `percent` of the pixels line pixels, anywhere.
inline void Sprinkle(CCelImg& cel, std::mt19937& random, int percent) {
    for (int y = 0; y < cel.Height(); ++y)
        for (int x = 0; x < cel.Width(); ++x)
            if (RandomBetween(random, 0, 99) < percent)
                cel.SetLine(x, y, true);
}

/// Draws a thin line between two random points; diagonal steps leave diagonal gaps.
inline void DrawRandomLine(CCelImg& cel, std::mt19937& random) {
    const int x0 = RandomBetween(random, 0, cel.Width() - 1), x1 = RandomBetween(random, 0, cel.Width() - 1);
    const int y0 = RandomBetween(random, 0, cel.Height() - 1), y1 = RandomBetween(random, 0, cel.Height() - 1);
    const int steps = std::max({std::abs(x1 - x0), std::abs(y1 - y0), 1});
    for (int i = 0; i <= steps; ++i)
        cel.SetLine(x0 + (x1 - x0) * i / steps, y0 + (y1 - y0) * i / steps, true);
}

/// Whether planes, line masks (padding included) and the modified flag are the same.
inline bool AreSame(const CCelImg& a, const CCelImg& b) {
    return a.Width() == b.Width() && a.Height() == b.Height() && a.IsModified() == b.IsModified() &&
           std::ranges::equal(a.LineMask(), b.LineMask()) && std::ranges::all_of(allChannels, [&](Channel channel) {
               return std::ranges::equal(a.PlaneOf(channel), b.PlaneOf(channel));
           });
}

/// The smallest rectangle around the pixels whose colour or line bit is not the same.
inline CRect Differences(const CCelImg& a, const CCelImg& b) {
    CRect rect;
    for (int y = 0; y < a.Height(); ++y)
        for (int x = 0; x < a.Width(); ++x)
            if (a.ColorAt(x, y) != b.ColorAt(x, y) || a.IsLine(x, y) != b.IsLine(x, y))
                rect = Union(rect, {x, y, x + 1, y + 1});
    return rect;
}

} // namespace velmor
