#include "image/clean/Thinning.h"

#include <algorithm>
#include <array>

namespace velmor {

namespace {

// The neighbours of a pixel in their order around it, and the bits of a number that says which of them are lines.
constexpr std::array<CPoint, 8> around{{{0, 1}, {1, 1}, {1, 0}, {1, -1}, {0, -1}, {-1, -1}, {-1, 0}, {-1, 1}}};

/// Whether a pixel with these neighbours goes in this half of a layer, in the terms of the paper.
constexpr bool IsDeletable(unsigned neighbours, int half) {
    const auto at = [neighbours](int i) { return static_cast<int>(neighbours >> (i % 8) & 1); };
    int crossings = 0, pairs = 0, shiftedPairs = 0;
    for (int i = 0; i < 8; i += 2) {
        crossings += (1 - at(i)) & (at(i + 1) | at(i + 2));
        pairs += at(i + 7) | at(i);
        shiftedPairs += at(i) | at(i + 1);
    }
    const int neighbourCount = std::min(pairs, shiftedPairs);
    const int side = half == 0 ? 4 : 0; // the halves take opposite sides
    const int isHeld = (at(side) | at(side + 1) | (1 - at(side + 3))) & at(side + 2);
    return crossings == 1 && (neighbourCount == 2 || neighbourCount == 3) && isHeld == 0;
}

constexpr auto deletable = [] {
    std::array<std::array<bool, 256>, 2> table{};
    for (int half = 0; half < 2; ++half)
        for (unsigned neighbours = 0; neighbours < 256; ++neighbours)
            table[static_cast<std::size_t>(half)][neighbours] = IsDeletable(neighbours, half);
    return table;
}();

} // namespace

CThinning::CThinning(CSize size)
    : m_size(size),
      m_stride(static_cast<std::size_t>(size.width) + 2),
      m_pixels(m_stride * (static_cast<std::size_t>(size.height) + 2), 0) {}

unsigned CThinning::NeighboursBeyondBorder(CPoint at) const {
    unsigned neighbours = 0;
    for (std::size_t i = 0; i < around.size(); ++i) {
        const int x = std::clamp(at.x + around[i].x, 0, m_size.width - 1);
        const int y = std::clamp(at.y + around[i].y, 0, m_size.height - 1);
        neighbours |= static_cast<unsigned>(m_pixels[IndexOf(x, y)]) << i;
    }
    return neighbours;
}

bool CThinning::Goes(CPoint at, int half) const {
    const std::uint8_t* const pixel = &m_pixels[IndexOf(at.x, at.y)];
    const auto stride = static_cast<std::ptrdiff_t>(m_stride);
    unsigned neighbours = 0;
    for (std::size_t i = 0; i < around.size(); ++i)
        neighbours |= static_cast<unsigned>(pixel[around[i].y * stride + around[i].x]) << i;
    const auto& table = deletable[static_cast<std::size_t>(half)];
    const bool isAtBorder = at.x == 0 || at.y == 0 || at.x == m_size.width - 1 || at.y == m_size.height - 1;
    return table[neighbours] && (!isAtBorder || table[NeighboursBeyondBorder(at)]);
}

std::vector<CPoint> CThinning::Peel(int layers) {
    std::vector<CPoint> lines, gone, going;
    for (int y = 0; y < m_size.height; ++y)
        for (int x = 0; x < m_size.width; ++x)
            if (m_pixels[IndexOf(x, y)] != 0)
                lines.push_back({x, y});
    for (int half = 0; half < 2 * layers; ++half) {
        const auto kept = std::stable_partition(lines.begin(), lines.end(),
                                                [&](const CPoint& at) { return !Goes(at, half % 2); });
        going.assign(kept, lines.end());
        lines.erase(kept, lines.end());
        for (const CPoint& at : going)
            m_pixels[IndexOf(at.x, at.y)] = 0;
        gone.insert(gone.end(), going.begin(), going.end());
    }
    return gone;
}

} // namespace velmor
