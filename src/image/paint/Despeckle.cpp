#include "image/paint/Despeckle.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace velmor {

namespace {

constexpr CColor paper{255, 255, 255, 255};

/// Finds groups of line pixels, each once.
class CLineGroups {
public:
    explicit CLineGroups(const CCelImg& cel)
        : m_width(cel.Width()),
          m_height(cel.Height()),
          m_rowBytes(static_cast<std::size_t>(cel.StrideBits() / 8)),
          m_left(cel.LineMask().begin(), cel.LineMask().end()) {}

    /// Calls use(pixels) for every group of at most `mostPixels`.
    template<class Use>
    void ForEachOfAtMost(std::size_t mostPixels, Use use) {
        for (int y = 0; y < m_height; ++y)
            for (int x = 0; x < m_width; ++x) {
                if (x % 8 == 0 && m_left[ByteOf(x, y)] == 0)
                    x += 7; // nothing in this byte
                else if (Take({x, y}) && Follow({x, y}, mostPixels))
                    use(m_group);
            }
    }

private:
    std::size_t ByteOf(int x, int y) const {
        return static_cast<std::size_t>(y) * m_rowBytes + static_cast<std::size_t>(x / 8);
    }

    // Whether it is a line pixel that is in no group yet.
    bool Take(CPoint at) {
        if (at.x < 0 || at.x >= m_width || at.y < 0 || at.y >= m_height)
            return false;
        std::uint8_t& byte = m_left[ByteOf(at.x, at.y)];
        const auto bit = static_cast<std::uint8_t>(0x80 >> at.x % 8);
        if ((byte & bit) == 0)
            return false;
        byte = static_cast<std::uint8_t>(byte & ~bit);
        return true;
    }

    // Takes the whole group that `start` belongs to; whether it is small enough, and then its pixels are kept.
    bool Follow(CPoint start, std::size_t mostPixels) {
        std::size_t count = 1;
        m_group.assign(1, start);
        m_open.assign(1, start);
        while (!m_open.empty()) {
            const CPoint from = m_open.back();
            m_open.pop_back();
            for (int y = from.y - 1; y <= from.y + 1; ++y)
                for (int x = from.x - 1; x <= from.x + 1; ++x)
                    if (Take({x, y})) {
                        m_open.push_back({x, y});
                        if (++count <= mostPixels)
                            m_group.push_back({x, y});
                    }
        }
        return count <= mostPixels;
    }

    int m_width;
    int m_height;
    std::size_t m_rowBytes;
    std::vector<std::uint8_t> m_left; ///< the line mask without what has been taken
    std::vector<CPoint> m_group;
    std::vector<CPoint> m_open;
};

/// The most frequent colour of the pixels that touch a group and are no lines; of several the first one met.
CColor ColorAround(const CCelImg& cel, const std::vector<CPoint>& group) {
    std::vector<std::pair<CColor, int>> colors;
    std::pair<CColor, int> most{paper, 0};
    for (const CPoint& at : group)
        for (int y = std::max(at.y - 1, 0); y <= std::min(at.y + 1, cel.Height() - 1); ++y)
            for (int x = std::max(at.x - 1, 0); x <= std::min(at.x + 1, cel.Width() - 1); ++x) {
                if (cel.IsLine(x, y))
                    continue;
                const CColor color = cel.ColorAt(x, y);
                auto known = std::ranges::find(colors, color, &std::pair<CColor, int>::first);
                if (known == colors.end())
                    known = colors.insert(known, {color, 0});
                if (++known->second > most.second)
                    most = *known;
            }
    return most.first;
}

} // namespace

int RemoveSpecks(CCelImg& cel, int mostPixels, UnderSpecks under) {
    if (cel.GetLoadState() != LoadState::Cel || mostPixels < 1)
        return 0;
    int specks = 0;
    CLineGroups(cel).ForEachOfAtMost(static_cast<std::size_t>(mostPixels), [&](const std::vector<CPoint>& group) {
        ++specks;
        const CColor color = under == UnderSpecks::Paper ? paper : ColorAround(cel, group);
        for (const CPoint& at : group) {
            cel.SetLine(at.x, at.y, false);
            cel.SetColorAt(at.x, at.y, color);
        }
    });
    if (specks > 0)
        cel.SetModified(true);
    return specks;
}

} // namespace velmor
