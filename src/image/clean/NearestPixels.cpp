#include "image/clean/NearestPixels.h"

#include <algorithm>

namespace velmor {

CNearestPixels::CNearestPixels(CSize size, int reach, const MarkRow& markRow)
    : m_size(size),
      m_reach(std::clamp(reach, 1, mostReach)),
      m_offsets(static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height), none) {
    LookDown(markRow);
    LookUp();
}

// From the lowest row up: what lies below each pixel, as an offset of at most 0.
void CNearestPixels::LookDown(const MarkRow& markRow) {
    const auto width = static_cast<std::size_t>(m_size.width);
    std::vector<std::uint8_t> marks(width);
    const std::vector<std::int8_t> nothing(width, none);
    const std::int8_t* below = nothing.data();
    for (int y = 0; y < m_size.height; ++y) {
        std::int8_t* const row = &m_offsets[static_cast<std::size_t>(y) * width];
        markRow(y, marks);
        for (std::size_t x = 0; x < width; ++x) {
            if (marks[x] != 0)
                row[x] = 0;
            else if (below[x] != none && below[x] > -m_reach)
                row[x] = static_cast<std::int8_t>(below[x] - 1);
        }
        below = row;
    }
}

// From the highest row down: what lies above, where that is nearer.
void CNearestPixels::LookUp() {
    const auto width = static_cast<std::size_t>(m_size.width);
    std::vector<std::int8_t> above(width, none);
    for (int y = m_size.height - 1; y >= 0; --y) {
        std::int8_t* const row = &m_offsets[static_cast<std::size_t>(y) * width];
        for (std::size_t x = 0; x < width; ++x) {
            if (row[x] == 0)
                above[x] = 0;
            else if (above[x] != none)
                above[x] = above[x] < m_reach ? static_cast<std::int8_t>(above[x] + 1) : none;
            if (above[x] != none && (row[x] == none || above[x] < -row[x]))
                row[x] = above[x];
        }
    }
}

std::optional<CPoint> CNearestPixels::Find(CPoint at) const {
    std::optional<CPoint> nearest;
    int least = m_reach * m_reach + 1;
    const auto look = [&](int x) {
        if (x < 0 || x >= m_size.width)
            return;
        const int offset = OffsetAt(x, at.y);
        const int distance = offset == none ? least : (x - at.x) * (x - at.x) + offset * offset;
        if (distance < least) {
            least = distance;
            nearest = CPoint{x, at.y + offset};
        }
    };
    look(at.x);
    for (int step = 1; step <= m_reach && step * step < least; ++step) {
        look(at.x - step);
        look(at.x + step);
    }
    return nearest;
}

} // namespace velmor
