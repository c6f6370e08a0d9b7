#pragma once

#include "image/CelImg.h"
#include "image/paint/Filters.h"
#include "image/render/Render.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <random>

namespace velmor::testing {

/// The rendering formula word for word, one pixel after the other, without any of the shortcuts of the real one.
inline void PlainRender(const CCelImg& image, const CPlacement& at, CFrameView frame) {
    CCelImg copy = image;
    if (std::floor(at.blurX) > 1.0 || std::floor(at.blurY) > 1.0)
        static_cast<void>(
            Blur(copy, static_cast<int>(std::floor(at.blurX)), static_cast<int>(std::floor(at.blurY))));
    if (at.antialias && !copy.LineMask().empty())
        static_cast<void>(Smooth(copy));
    copy.SetModified(false);
    const int w = copy.Width();
    const int h = copy.Height();
    const int middleX = w / 2;
    const int middleY = h / 2;
    for (int row = 0; row < frame.height; ++row)
        for (int column = 0; column < frame.width; ++column) {
            double dx = column - at.centreX;
            double dy = row - at.centreY;
            if (at.angle != 0) {
                const double x = dx * std::cos(at.angle) - dy * std::sin(at.angle);
                const double y = dx * std::sin(at.angle) + dy * std::cos(at.angle);
                dx = x;
                dy = y;
            }
            const double sx = dx / at.scaleX + middleX;
            const double sy = dy / at.scaleY + middleY;
            if (!(sx >= 0 && sy >= 0 && sx < w && sy < h))
                continue;
            const int ix = static_cast<int>(std::floor(sx));
            const int iy = static_cast<int>(std::floor(sy));
            std::array<int, 4> sample{};
            for (std::size_t plane = 0; plane < 4; ++plane) {
                const auto pixel = [&](int x, int y) -> int {
                    return copy.PlaneOf(static_cast<Channel>(plane))[copy.IndexOf(x, y)];
                };
                sample[plane] = pixel(ix, iy);
                if (at.antialias && ix < w - 1 && iy < h - 1) {
                    const int p = pixel(ix, iy);
                    const int q = pixel(ix + 1, iy);
                    const int r = pixel(ix, iy + 1);
                    const int s = pixel(ix + 1, iy + 1);
                    const double fx = sx - ix;
                    const double fy = sy - iy;
                    sample[plane] =
                        static_cast<std::uint8_t>(p + (q - p) * fx + (r - p) * fy + (s - q - r + p) * fx * fy);
                }
            }
            int alpha = sample[3];
            if (at.transparency != 0)
                alpha = static_cast<int>((100.0 - at.transparency) * alpha * 0.01);
            for (std::size_t byte = 0; byte < 3; ++byte) {
                std::uint8_t& pixel =
                    frame.pixels[(static_cast<std::size_t>(row) * static_cast<std::size_t>(frame.width) +
                                  static_cast<std::size_t>(column)) *
                                     3 +
                                 byte];
                pixel = static_cast<std::uint8_t>((sample[2 - byte] * alpha + pixel * (255 - alpha)) / 255);
            }
        }
}

/// What the pixels of a test image are like.
enum class Texture { Noise, OpaqueNoise, Gradient, Painted, Speck };

/// A cel or picture of some texture. A painted one has large areas of one colour, transparent and not, with noise
/// at their edges; so it meets every shortcut. A speck is a few pixels of noise, or none, in an image that is
/// otherwise transparent.
inline CCelImg MakeTestImage(std::mt19937& random, int width, int height, LoadState kind, Texture texture) {
    CCelImg image;
    const Path path = "test";
    static_cast<void>(kind == LoadState::Cel ? image.CreateCel(width, height, path)
                                             : image.CreatePicture(width, height, path));
    const auto byte = [&random] { return static_cast<std::uint8_t>(random()); };
    const double radius = std::min(width, height) * 0.4;
    const CColor paint{byte(), byte(), byte(), static_cast<std::uint8_t>(random() % 2 == 0 ? 255 : byte())};
    const auto pick = [&random](int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); };
    CRect speck{pick(width), pick(height), 0, 0};
    speck.endX = speck.x + pick(5);
    speck.endY = speck.y + pick(5);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            CColor color{byte(), byte(), byte(), byte()};
            const double distance = std::hypot(x - width / 2, y - height / 2) - radius;
            if (texture == Texture::OpaqueNoise)
                color.alpha = 255;
            if (texture == Texture::Gradient)
                color = {static_cast<std::uint8_t>(x), static_cast<std::uint8_t>(y),
                         static_cast<std::uint8_t>(x + y), static_cast<std::uint8_t>(255 - x / 4)};
            if (texture == Texture::Speck && !(speck.x <= x && x < speck.endX && speck.y <= y && y < speck.endY))
                color.alpha = 0;
            if (texture == Texture::Painted && distance > 1)
                color.alpha = 0;
            if (texture == Texture::Painted && distance < -1)
                color = paint;
            image.SetColorAt(x, y, color);
            if (kind == LoadState::Cel && (std::abs(distance) < 1 || random() % 16 == 0))
                image.SetLine(x, y, true);
        }
    return image;
}

} // namespace velmor::testing
