#include "image/paint/Recolor.h"

#include <algorithm>
#include <vector>

namespace velmor {

namespace {

/// The values of a channel that are found.
struct CChannelRange {
    CChannelRange(int value, int tolerance)
        : first(static_cast<std::uint8_t>(std::max(value - tolerance, 0))),
          length(static_cast<std::uint8_t>(std::min(value + tolerance, 255) - first)) {}
    bool Holds(std::uint8_t value) const { return static_cast<std::uint8_t>(value - first) <= length; }

    std::uint8_t first;
    std::uint8_t length;
};

/// Finds the pixels of a recolouring, row by row.
class CColorFinder {
public:
    CColorFinder(const CCelImg& image, const CRecoloring& recoloring)
        : m_image(image),
          m_recoloring(recoloring),
          m_red(recoloring.from.red, Tolerance()),
          m_green(recoloring.from.green, Tolerance()),
          m_blue(recoloring.from.blue, Tolerance()),
          m_alpha(recoloring.from.alpha, recoloring.keepsAlpha ? 255 : Tolerance()),
          m_row(static_cast<std::size_t>(image.Width())) {}

    /// 1 for each pixel of row y that is found, otherwise 0.
    const std::vector<std::uint8_t>& Row(int y) {
        const std::size_t start = m_image.IndexOf(0, y);
        const std::uint8_t* const red = m_image.PlaneOf(Channel::Red).data() + start;
        const std::uint8_t* const green = m_image.PlaneOf(Channel::Green).data() + start;
        const std::uint8_t* const blue = m_image.PlaneOf(Channel::Blue).data() + start;
        const std::uint8_t* const alpha = m_image.PlaneOf(Channel::Alpha).data() + start;
        for (std::size_t x = 0; x < m_row.size(); ++x) // without branches it is done on many pixels at a time
            m_row[x] = static_cast<std::uint8_t>(int{m_red.Holds(red[x])} & int{m_green.Holds(green[x])} &
                                                 int{m_blue.Holds(blue[x])} & int{m_alpha.Holds(alpha[x])});
        if (m_recoloring.what != SelectWhat::Both && m_image.GetLoadState() == LoadState::Cel)
            KeepOnlyMeant(y);
        return m_row;
    }

private:
    int Tolerance() const { return std::clamp(m_recoloring.tolerance, 0, 255); }
    void KeepOnlyMeant(int y) {
        const bool lines = HoldsLines(m_recoloring.what);
        for (std::size_t x = 0; x < m_row.size(); ++x)
            if (m_row[x] != 0 && m_image.IsLine(static_cast<int>(x), y) != lines)
                m_row[x] = 0;
    }

    const CCelImg& m_image;
    const CRecoloring& m_recoloring;
    CChannelRange m_red, m_green, m_blue, m_alpha;
    std::vector<std::uint8_t> m_row;
};

} // namespace

std::int64_t CountColor(const CCelImg& image, const CRecoloring& recoloring) {
    CColorFinder finder(image, recoloring);
    std::int64_t count = 0;
    for (int y = 0; y < image.Height(); ++y)
        count += std::ranges::count(finder.Row(y), 1);
    return count;
}

CPaintResult Recolor(CCelImg& image, const CRecoloring& recoloring) {
    return PaintWithMemory([&] {
        CColorFinder finder(image, recoloring);
        CRect changed;
        for (int y = 0; y < image.Height(); ++y) {
            const std::vector<std::uint8_t>& found = finder.Row(y);
            for (int x = 0; x < image.Width(); ++x) {
                if (found[static_cast<std::size_t>(x)] == 0)
                    continue;
                CColor color = recoloring.to;
                if (recoloring.keepsAlpha)
                    color.alpha = image.ColorAt(x, y).alpha;
                image.SetColorAt(x, y, color);
                changed = Union(changed, {x, y, x + 1, y + 1});
            }
        }
        if (!changed.IsEmpty())
            image.SetModified(true);
        return changed;
    });
}

} // namespace velmor
