#include "image/paper/Ink.h"

#include <algorithm>

namespace velmor {

namespace {

int DarknessOf(const CColor& color) {
    return 255 - (color.red * 77 + color.green * 150 + color.blue * 29) / 256;
}

/// Puts the ink of one row into `cover`, which is all 0.
class CInkReader {
public:
    CInkReader(const CCelImg& image, bool withPaint)
        : m_image(image),
          m_alpha(image.PlaneOf(Channel::Alpha)),
          m_isPicture(image.GetLoadState() == LoadState::Picture),
          m_withPaint(withPaint) {}

    void Read(int y, std::span<std::uint8_t> cover) const {
        if (m_isPicture || m_withPaint)
            ReadPaint(y, cover);
        if (!m_isPicture)
            ReadLines(y, cover);
    }

private:
    void ReadPaint(int y, std::span<std::uint8_t> cover) const {
        const int share = m_isPicture ? 1 : 2;
        for (int x = 0; x < m_image.Width(); ++x) {
            const CColor color = m_image.ColorAt(x, y);
            cover[static_cast<std::size_t>(x)] =
                static_cast<std::uint8_t>(DarknessOf(color) * color.alpha / (255 * share));
        }
    }

    void ReadLines(int y, std::span<std::uint8_t> cover) const {
        const auto stride = static_cast<std::size_t>(m_image.StrideBits() / 8);
        const std::span<const std::uint8_t> bits =
            m_image.LineMask().subspan(static_cast<std::size_t>(y) * stride, stride);
        const std::uint8_t* alpha = m_alpha.data() + m_image.IndexOf(0, y);
        for (std::size_t x = 0; x < cover.size(); x += 8)
            if (bits[x / 8] != 0)
                for (std::size_t bit = 0; bit < std::min<std::size_t>(8, cover.size() - x); ++bit)
                    if ((bits[x / 8] >> (7 - bit) & 1) != 0)
                        cover[x + bit] = alpha[x + bit];
    }

    const CCelImg& m_image;
    std::span<const std::uint8_t> m_alpha;
    bool m_isPicture;
    bool m_withPaint;
};

// The smallest area that holds everything.
CRect AreaOf(const std::vector<std::uint8_t>& cover, const CSize& size) {
    CRect area;
    const auto isInk = [](std::uint8_t value) { return value != 0; };
    for (int y = 0; y < size.height; ++y) {
        const auto row = cover.begin() + static_cast<std::ptrdiff_t>(y) * size.width;
        const auto end = row + size.width;
        const auto first = std::find_if(row, end, isInk);
        if (first == end)
            continue;
        const auto behind = std::find_if(std::make_reverse_iterator(end), std::make_reverse_iterator(first), isInk);
        area = Union(area, {static_cast<int>(first - row), y, static_cast<int>(behind.base() - row), y + 1});
    }
    return area;
}

} // namespace

CInk InkOf(const CCelImg& image, bool withPaint) {
    CInk ink;
    ink.size = {image.Width(), image.Height()};
    if (image.GetLoadState() == LoadState::Nothing)
        return ink;
    const auto width = static_cast<std::size_t>(image.Width());
    std::vector<std::uint8_t> whole(width * static_cast<std::size_t>(image.Height()));
    const CInkReader reader(image, withPaint);
    for (int y = 0; y < image.Height(); ++y)
        reader.Read(y, std::span(whole).subspan(image.IndexOf(0, y), width));
    ink.area = AreaOf(whole, ink.size);
    ink.cover.reserve(static_cast<std::size_t>(ink.area.endX - ink.area.x) *
                      static_cast<std::size_t>(ink.area.endY - ink.area.y));
    for (int y = ink.area.y; y < ink.area.endY; ++y) {
        const auto row = whole.begin() + static_cast<std::ptrdiff_t>(y) * image.Width();
        ink.cover.insert(ink.cover.end(), row + ink.area.x, row + ink.area.endX);
    }
    return ink;
}

} // namespace velmor
