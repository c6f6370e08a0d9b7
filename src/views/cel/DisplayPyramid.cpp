#include "views/cel/DisplayPyramid.h"

#include <algorithm>
#include <cmath>

namespace velmor {

namespace {

constexpr std::uint32_t oddBytes = 0x00ff00ff;

// a + (b - a) * weight / 256 in each channel; two channels at a time, with room between them.
std::uint32_t Mix(std::uint32_t a, std::uint32_t b, std::uint32_t weight) {
    const std::uint32_t redBlue = ((a & oddBytes) * (256 - weight) + (b & oddBytes) * weight) >> 8 & oddBytes;
    const std::uint32_t green = ((a >> 8 & oddBytes) * (256 - weight) + (b >> 8 & oddBytes) * weight) & ~oddBytes;
    return redBlue | green;
}

std::uint32_t MeanOfFour(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d) {
    constexpr std::uint32_t half = 0x00020002;
    const std::uint32_t redBlue = (a & oddBytes) + (b & oddBytes) + (c & oddBytes) + (d & oddBytes) + half;
    const std::uint32_t green =
        (a >> 8 & oddBytes) + (b >> 8 & oddBytes) + (c >> 8 & oddBytes) + (d >> 8 & oddBytes) + half;
    return (redBlue >> 2 & oddBytes) | (green >> 2 & oddBytes) << 8;
}

} // namespace

void CDisplayPyramid::Clear() {
    m_levels.clear();
    m_changed = {};
}

void CDisplayPyramid::SpreadChange() {
    CRect stale = m_changed;
    for (CLevel& level : m_levels) {
        stale = Intersection(stale, {0, 0, level.size.width, level.size.height});
        level.stale = Union(level.stale, stale);
        stale = {stale.x / 2, stale.y / 2, (stale.endX + 1) / 2, (stale.endY + 1) / 2};
    }
    m_changed = {};
}

void CDisplayPyramid::Copy(const CDisplayBitmap& bitmap, CLevel& to) {
    constexpr std::size_t pixelSize = 3;
    for (int y = to.stale.y; y < to.stale.endY; ++y) {
        const std::uint8_t* from =
            bitmap.bytes.data() + (static_cast<std::size_t>(y) * static_cast<std::size_t>(bitmap.width) +
                                   static_cast<std::size_t>(to.stale.x)) *
                                      pixelSize;
        for (std::uint32_t* pixel = to.Row(y) + to.stale.x; pixel != to.Row(y) + to.stale.endX; ++pixel) {
            *pixel = static_cast<std::uint32_t>(from[0] | from[1] << 8 | from[2] << 16);
            from += pixelSize;
        }
    }
    to.stale = {};
}

void CDisplayPyramid::Halve(const CLevel& from, CLevel& to) {
    for (int y = to.stale.y; y < to.stale.endY; ++y) {
        const std::uint32_t* const below = from.Row(2 * y);
        const std::uint32_t* const above = from.Row(std::min(2 * y + 1, from.size.height - 1));
        std::uint32_t* const row = to.Row(y);
        for (int x = to.stale.x; x < to.stale.endX; ++x) {
            const int next = std::min(2 * x + 1, from.size.width - 1);
            row[x] = MeanOfFour(below[2 * x], below[next], above[2 * x], above[next]);
        }
    }
    to.stale = {};
}

void CDisplayPyramid::Prepare(const CDisplayBitmap& bitmap, CSize size, double factor) {
    SpreadChange();
    m_level = factor >= 1 ? 0 : static_cast<std::size_t>(std::floor(std::log2(1 / factor) + 1e-9));
    for (std::size_t i = 0; i <= m_level; ++i) {
        if (i == m_levels.size()) {
            const CSize own =
                i == 0 ? size : CSize{(m_levels.back().size.width + 1) / 2, (m_levels.back().size.height + 1) / 2};
            m_levels.push_back({own,
                                std::vector<std::uint32_t>(static_cast<std::size_t>(own.width) *
                                                           static_cast<std::size_t>(own.height)),
                                {0, 0, own.width, own.height}});
        }
        if (i == 0)
            Copy(bitmap, m_levels[i]);
        else
            Halve(m_levels[i - 1], m_levels[i]);
    }
}

void CDisplayPyramid::Sample(CRealPoint start, CRealPoint step, int skipped,
                             std::span<std::uint32_t> colors) const {
    const CLevel& level = m_levels[m_level];
    constexpr double one = 65536;
    const double scale = one / static_cast<double>(std::size_t{1} << m_level);
    const auto stepX = static_cast<std::int64_t>(step.x * scale);
    const auto stepY = static_cast<std::int64_t>(step.y * scale);
    // Between the centres of pixels, where the mixture is that of the two beside.
    std::int64_t x = static_cast<std::int64_t>(start.x * scale - one / 2) + skipped * stepX;
    std::int64_t y = static_cast<std::int64_t>(start.y * scale - one / 2) + skipped * stepY;
    const int lastX = level.size.width - 1;
    const int lastY = level.size.height - 1;
    for (std::uint32_t& color : colors) {
        const int left = static_cast<int>(x >> 16);
        const int bottom = static_cast<int>(y >> 16);
        const std::uint32_t* const below = level.Row(std::clamp(bottom, 0, lastY));
        const std::uint32_t* const above = level.Row(std::clamp(bottom + 1, 0, lastY));
        const int x0 = std::clamp(left, 0, lastX);
        const int x1 = std::clamp(left + 1, 0, lastX);
        const auto weightX = static_cast<std::uint32_t>(x >> 8 & 255);
        const auto weightY = static_cast<std::uint32_t>(y >> 8 & 255);
        color = Mix(Mix(below[x0], below[x1], weightX), Mix(above[x0], above[x1], weightX), weightY);
        x += stepX;
        y += stepY;
    }
}

} // namespace velmor
