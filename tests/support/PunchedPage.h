#pragma once

#include "RandomImages.h"
#include "image/clean/Pegs.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <random>

namespace velmor::testing {

/// A page with the holes of a peg standard, computed from their shapes pixel by pixel.
struct CPunchedPage {
    enum class Holes { Dark, Light, Outlined };

    CSize size{1575, 1260};
    double dpi = 150;
    double x = 780; ///< middle of the row
    double y = 1140;
    double degrees = 0;
    Holes holes = Holes::Dark;
    double slotInches = 0.5;
    bool areRounded = false; ///< the slots' ends

    /// The holes alone, on a cel.
    CCelImg Draw() const {
        CCelImg page;
        EXPECT_TRUE(page.CreateCel(size.width, size.height, "page.bit"));
        for (int py = 0; py < size.height; ++py)
            for (int px = 0; px < size.width; ++px) {
                const double outside = DistanceFromHoles(px, py);
                const bool isDark = holes == Holes::Dark       ? outside <= 0
                                    : holes == Holes::Outlined ? std::abs(outside) < 1.2
                                                               : outside > 0 && outside < 60;
                if (isDark)
                    SetBlack(page, px, py);
            }
        return page;
    }

    /// Pixels from the outline of the nearest hole, negative inside.
    double DistanceFromHoles(double px, double py) const {
        const double angle = degrees * std::numbers::pi / 180;
        const double along = (px - x) * std::cos(angle) + (py - y) * std::sin(angle);
        const double across = (py - y) * std::cos(angle) - (px - x) * std::sin(angle);
        const double width = dpi / 8, length = slotInches * dpi;
        const double inRound = std::hypot(along, across) - dpi / 8;
        const double toMiddle = std::abs(std::abs(along) - 4 * dpi);
        if (areRounded)
            return std::min(inRound,
                            std::hypot(std::max(toMiddle - (length - width) / 2, 0.0), across) - width / 2);
        return std::min(inRound, std::max(toMiddle - length / 2, std::abs(across) - width / 2));
    }

    static void SetBlack(CCelImg& page, int px, int py) {
        page.SetLine(px, py, true);
        page.SetColorAt(px, py, {0, 0, 0, 255});
    }
};

/// Turns single pixels over, each one of so many.
inline void AddNoise(CCelImg& page, std::mt19937& random, int oneOf) {
    for (int y = 0; y < page.Height(); ++y)
        for (int x = 0; x < page.Width(); ++x)
            if (random() % static_cast<unsigned>(oneOf) == 0)
                page.SetLine(x, y, !page.IsLine(x, y));
}

/// Discs, dashes and lines anywhere, of the sizes that holes have too.
inline void AddDirt(CCelImg& scan, std::mt19937& random, int count) {
    for (int i = 0; i < count; ++i) {
        const int x = RandomBetween(random, 0, scan.Width() - 1), y = RandomBetween(random, 0, scan.Height() - 1);
        const int halfWidth = RandomBetween(random, 1, 20), halfHeight = RandomBetween(random, 1, 20);
        for (int py = std::max(0, y - halfHeight); py < std::min(scan.Height(), y + halfHeight); ++py)
            for (int px = std::max(0, x - halfWidth); px < std::min(scan.Width(), x + halfWidth); ++px)
                if (std::hypot(double(px - x) / halfWidth, double(py - y) / halfHeight) < 1)
                    scan.SetLine(px, py, true);
        DrawRandomLine(scan, random);
    }
}

/// Dirt that keeps a little away from the holes.
inline CCelImg DirtyScan(const CPunchedPage& page, std::mt19937& random, int count) {
    CCelImg scan = page.Draw();
    CCelImg dirt = scan;
    AddDirt(dirt, random, count);
    for (int y = 0; y < scan.Height(); ++y)
        for (int x = 0; x < scan.Width(); ++x)
            if (dirt.IsLine(x, y) && page.DistanceFromHoles(x, y) > 3)
                scan.SetLine(x, y, true);
    return scan;
}

/// A tear: a triangle from a hole's outline outward.
inline void Tear(CCelImg& page, double x, double y, int depth, int breadth, bool dark) {
    for (int step = 0; step < depth; ++step)
        for (int side = -breadth * (depth - step) / depth; side <= breadth * (depth - step) / depth; ++side)
            page.SetLine(static_cast<int>(x) + side, static_cast<int>(y) + step, dark);
}

} // namespace velmor::testing
