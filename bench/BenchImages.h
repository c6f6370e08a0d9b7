#pragma once

#include "image/CelImg.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <numbers>
#include <string>
#include <unistd.h>

namespace velmor {

/// A folder of the benchmark's own, gone when the object is.
class CBenchFolder {
public:
    CBenchFolder()
        : m_path(std::filesystem::temp_directory_path() / ("velmor-bench-" + std::to_string(::getpid()))) {
        std::filesystem::create_directories(m_path);
    }
    CBenchFolder(const CBenchFolder&) = delete;
    CBenchFolder& operator=(const CBenchFolder&) = delete;
    ~CBenchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    const std::filesystem::path& Path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

/// Opaque noise all over, which no shortcut helps.
inline void PaintNoise(CCelImg& image, int seed) {
    std::uint32_t state = static_cast<std::uint32_t>(seed) * 2654435761U;
    for (int y = 0; y < image.Height(); ++y)
        for (int x = 0; x < image.Width(); ++x) {
            state = state * 1664525U + 1013904223U;
            image.SetColorAt(x, y,
                             {static_cast<std::uint8_t>(state >> 24), static_cast<std::uint8_t>(state >> 16),
                              static_cast<std::uint8_t>(x + y), 255});
        }
}

/// An opaque picture as backgrounds are: soft gradients and a few shapes.
inline void PaintLandscape(CCelImg& image) {
    for (int y = 0; y < image.Height(); ++y)
        for (int x = 0; x < image.Width(); ++x) {
            const double hill = image.Height() * (0.4 + 0.08 * std::sin(x * 0.01));
            const double light = static_cast<double>(y) / image.Height();
            const bool isSky = y > hill;
            image.SetColorAt(x, y,
                             {static_cast<std::uint8_t>(isSky ? 255 - 60 * light : 40 + 30 * light),
                              static_cast<std::uint8_t>(isSky ? 160 + 60 * light : 110 + 90 * light),
                              static_cast<std::uint8_t>(isSky ? 90 + 100 * light : 70 + 40 * light), 255});
        }
}

/// A body of overlapping discs over a third of the image, with lines around each and paint of one colour inside, on
/// transparent paint.
inline void PaintCharacter(CCelImg& image, int number) {
    constexpr int discs = 9;
    const double side = std::min(image.Width(), image.Height());
    const double reach = side * 0.16 + 2;
    std::array<double, discs> centreX{}, centreY{};
    for (std::size_t disc = 0; disc < discs; ++disc) {
        const double turn = static_cast<double>(disc) * 2 * std::numbers::pi / discs + number;
        centreX[disc] = image.Width() / 2.0 + side * 0.25 * std::cos(turn);
        centreY[disc] = image.Height() / 2.0 + side * 0.25 * std::sin(turn);
    }
    for (int y = 0; y < image.Height(); ++y)
        for (int x = 0; x < image.Width(); ++x) {
            CColor color{255, 255, 255, 0};
            for (std::size_t disc = 0; disc < discs; ++disc) {
                if (std::abs(x - centreX[disc]) > reach || std::abs(y - centreY[disc]) > reach)
                    continue;
                const double distance = std::hypot(x - centreX[disc], y - centreY[disc]) - side * 0.16;
                const bool isLine = std::abs(distance) < 1.2;
                if (isLine)
                    image.SetLine(x, y, true);
                if (isLine)
                    color = {0, 0, 0, 255};
                else if (distance < 0 && color != CColor{0, 0, 0, 255})
                    color = {static_cast<std::uint8_t>(disc * 25), static_cast<std::uint8_t>(number * 40), 200,
                             255};
            }
            image.SetColorAt(x, y, color);
        }
}

} // namespace velmor
