#include "image/select/MaskOutline.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace velmor {

namespace {

// To the right, up, to the left, down: a turn to the left is the next one.
constexpr std::array<CPoint, 4> steps{{{1, 0}, {0, 1}, {-1, 0}, {0, -1}}};

/// Walks along the sides of pixels with what is selected on the left.
class COutliner {
public:
    COutliner(const CRect& bounds, const std::function<bool(int, int)>& isSelected)
        : m_bounds(bounds),
          m_width(bounds.endX - bounds.x + 2),
          m_selected(static_cast<std::size_t>(m_width) * static_cast<std::size_t>(bounds.endY - bounds.y + 2)),
          m_seen(m_selected.size()) {
        for (int y = bounds.y; y < bounds.endY; ++y)
            for (int x = bounds.x; x < bounds.endX; ++x)
                m_selected[IndexOf(x, y)] = isSelected(x, y) ? 1 : 0;
    }

    std::vector<std::vector<CPoint>> Run(std::size_t mostCorners) {
        std::vector<std::vector<CPoint>> lines;
        std::size_t corners = 0;
        for (int y = m_bounds.y; y < m_bounds.endY; ++y)
            for (int x = m_bounds.x; x < m_bounds.endX && corners < mostCorners; ++x)
                if (IsLowerSide(x, y) && m_seen[IndexOf(x, y)] == 0) {
                    lines.push_back(Follow({x, y}));
                    corners += lines.back().size();
                }
        return lines;
    }

private:
    std::size_t IndexOf(int x, int y) const {
        return static_cast<std::size_t>(y - m_bounds.y + 1) * static_cast<std::size_t>(m_width) +
               static_cast<std::size_t>(x - m_bounds.x + 1);
    }
    bool IsSelected(int x, int y) const { return m_selected[IndexOf(x, y)] != 0; }
    bool IsLowerSide(int x, int y) const { return IsSelected(x, y) && !IsSelected(x, y - 1); }

    // The pixel ahead of a corner, on one side of the way.
    bool IsAhead(CPoint at, std::size_t way, bool left) const {
        const CPoint ahead = steps[way];
        const CPoint side = steps[(way + (left ? 1 : 3)) % 4];
        // Of the four pixels around a corner the one that lies in both directions.
        const int dx = ahead.x + side.x;
        const int dy = ahead.y + side.y;
        return IsSelected(dx > 0 ? at.x : at.x - 1, dy > 0 ? at.y : at.y - 1);
    }

    // One line, beginning at the lower left corner of a pixel whose lower side it goes along first.
    std::vector<CPoint> Follow(CPoint start) {
        std::vector<CPoint> line{start};
        CPoint at = start;
        std::size_t way = 0;
        do {
            if (way == 0)
                m_seen[IndexOf(at.x, at.y)] = 1;
            at = {at.x + steps[way].x, at.y + steps[way].y};
            const std::size_t before = way;
            if (!IsAhead(at, way, true))
                way = (way + 1) % 4;
            else if (IsAhead(at, way, false))
                way = (way + 3) % 4;
            if (way != before && (at != start || way != 0))
                line.push_back(at);
        } while (at != start || way != 0);
        return line;
    }

    CRect m_bounds;
    int m_width; ///< with a pixel on either side that is not selected
    std::vector<std::uint8_t> m_selected;
    std::vector<std::uint8_t> m_seen; ///< pixels whose lower side has a line
};

} // namespace

std::vector<std::vector<CPoint>> OutlineOf(const CRect& bounds, const std::function<bool(int x, int y)>& isSelected,
                                           std::size_t mostCorners) {
    return bounds.IsEmpty() ? std::vector<std::vector<CPoint>>() : COutliner(bounds, isSelected).Run(mostCorners);
}

} // namespace velmor
