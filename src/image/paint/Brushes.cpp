#include "image/paint/Brushes.h"

#include "image/paint/Tools.h"

#include <algorithm>
#include <cmath>

namespace velmor {

namespace {

std::uint8_t SoftWeight(double distance, double radius) {
    const double core = 2.0 * radius / 3.0;
    if (distance <= core)
        return 255;
    return static_cast<std::uint8_t>(255.0 - (distance - core) / (radius - core) * 255.0);
}

CBrush MakeBrush(int radius) {
    CBrush brush;
    for (int dy = -brushReach; dy < brushReach; ++dy)
        for (int dx = -brushReach; dx < brushReach; ++dx) {
            if (dx * dx + dy * dy > radius * radius)
                continue;
            const auto row = static_cast<std::size_t>(dy + brushReach);
            CBrush::Span& span = brush.hard[row];
            span = span.begin == span.end ? CBrush::Span{dx, dx + 1} : CBrush::Span{span.begin, dx + 1};
            brush.soft[row][static_cast<std::size_t>(dx + brushReach)] =
                SoftWeight(std::sqrt(static_cast<double>(dx * dx + dy * dy)), radius);
        }
    return brush;
}

std::array<CBrush, brushCount> MakeBrushes() {
    std::array<CBrush, brushCount> brushes;
    for (int i = 0; i < brushCount; ++i)
        brushes[static_cast<std::size_t>(i)] = MakeBrush(BrushRadius(i));
    return brushes;
}

} // namespace

int BrushRadius(int brush) {
    return brush >= 0 && brush < brushCount ? 1 + 4 * brush : 0;
}

const CBrush& BrushOf(int brush) {
    static const std::array<CBrush, brushCount> brushes = MakeBrushes();
    return brushes[static_cast<std::size_t>(brush)];
}

} // namespace velmor
