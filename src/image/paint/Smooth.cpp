#include "image/paint/Filters.h"

#include "image/paint/MaskWords.h"
#include "image/paint/PaintBounds.h"

#include <algorithm>
#include <array>
#include <vector>

namespace velmor {

namespace {

/// A number for each pixel of a word, held as one word for each binary digit.
struct CBitCounts {
    MaskWord ones = 0, twos = 0, fours = 0, eights = 0;

    void Add(MaskWord bits) {
        const MaskWord carry1 = ones & bits;
        ones ^= bits;
        const MaskWord carry2 = twos & carry1;
        twos ^= carry1;
        eights |= fours & carry2;
        fours ^= carry2;
    }
};

/// The pixels of a word by the number of line pixels among their neighbours; line pixels themselves excepted.
struct CNeighbourhood {
    MaskWord any = 0;  ///< at least one
    MaskWord many = 0; ///< three or more: those that change
    MaskWord three = 0;
    MaskWord four = 0;
    MaskWord five = 0;
};

MaskWord OneLeft(const MaskWord* word) {
    return word[0] >> 1 | word[-1] << (maskWordBits - 1);
}
MaskWord OneRight(const MaskWord* word) {
    return word[0] << 1 | word[1] >> (maskWordBits - 1);
}

/// The rows around one row of a mask, each with an empty word at either end.
class CMaskWindow {
public:
    explicit CMaskWindow(const CCelImg& cel) : m_cel(cel), m_words(MaskWordsOf(cel.Width())) {
        for (auto& row : m_rows)
            row.assign(m_words + 2, 0);
        Load(m_rows[2], 0);
    }

    /// To be called with 0, 1, 2, ...
    void MoveTo(int y) {
        std::rotate(m_rows.begin(), m_rows.begin() + 1, m_rows.end());
        Load(m_rows[2], y + 1);
    }
    std::size_t Words() const { return m_words; }

    bool HasLinesAround(std::size_t i) const {
        return std::any_of(m_rows.begin(), m_rows.end(), [i](const auto& row) {
            return (row[i + 1] | row[i] << (maskWordBits - 1) | row[i + 2] >> (maskWordBits - 1)) != 0;
        });
    }

    CNeighbourhood Around(std::size_t i) const {
        CBitCounts counts;
        for (const auto& row : m_rows) {
            const MaskWord* const word = &row[i + 1];
            counts.Add(OneLeft(word));
            counts.Add(OneRight(word));
        }
        counts.Add(m_rows[0][i + 1]);
        counts.Add(m_rows[2][i + 1]);
        MaskWord paper = ~m_rows[1][i + 1];
        if (i + 1 == m_words)
            paper &= ~MaskFrom(m_cel.Width() % maskWordBits);

        CNeighbourhood around;
        const MaskWord high = (counts.fours | counts.eights) & paper;
        around.many = high | (counts.twos & counts.ones & paper);
        around.any = around.many | ((counts.twos | counts.ones) & paper);
        around.three = around.many & ~high;
        const MaskWord fourOrFive = counts.fours & ~counts.twos & high;
        around.four = fourOrFive & ~counts.ones;
        around.five = fourOrFive & counts.ones;
        return around;
    }

private:
    void Load(std::vector<MaskWord>& row, int y) {
        if (y < m_cel.Height())
            LoadMaskRow(m_cel, y, std::span(row).subspan(1, m_words));
        else
            std::ranges::fill(row, MaskWord{0});
    }

    const CCelImg& m_cel;
    std::size_t m_words;
    std::array<std::vector<MaskWord>, 3> m_rows;
};

class CSmoothing {
public:
    explicit CSmoothing(CCelImg& cel)
        : m_cel(cel),
          m_window(cel),
          m_planes{cel.PlaneOf(Channel::Red).data(), cel.PlaneOf(Channel::Green).data(),
                   cel.PlaneOf(Channel::Blue).data()} {}

    CRect Run() {
        for (int y = 0; y < m_cel.Height(); ++y) {
            m_window.MoveTo(y);
            for (std::size_t i = 0; i < m_window.Words(); ++i)
                if (m_window.HasLinesAround(i))
                    SmoothWord(y, static_cast<int>(i) * maskWordBits, m_window.Around(i));
        }
        return m_bounds.Rect();
    }

private:
    static constexpr bool Has(MaskWord bits, int bit) { return (bits >> (maskWordBits - 1 - bit) & 1) != 0; }

    /// A pixel with five line neighbours takes the weight of the pixel with a line neighbour before it, however far
    /// back; one and two neighbours weigh nothing and change nothing.
    void SmoothWord(int y, int firstX, const CNeighbourhood& around) {
        ForEachBit(around.many, 0, [&](int bit) {
            if (!Has(around.five, bit))
                m_weight = Has(around.three, bit) ? 64 : Has(around.four, bit) ? 128 : 192;
            else if (const MaskWord before = around.any & ~MaskFrom(bit); before != 0)
                m_weight = Has(around.many, maskWordBits - 1 - std::countr_zero(before)) ? m_weight : 0;
            if (m_weight > 0)
                Blend(firstX + bit, y, m_weight);
        });
        if (around.any != 0 && (around.any & (~around.any + 1) & around.many) == 0)
            m_weight = 0;
    }

    void Blend(int x, int y, int weight) {
        std::array<int, 3> sums{};
        int lines = 0;
        for (int row = std::max(y - 1, 0); row <= std::min(y + 1, m_cel.Height() - 1); ++row)
            for (int column = std::max(x - 1, 0); column <= std::min(x + 1, m_cel.Width() - 1); ++column)
                if (m_cel.IsLine(column, row)) {
                    ++lines;
                    for (std::size_t i = 0; i < sums.size(); ++i)
                        sums[i] += m_planes[i][m_cel.IndexOf(column, row)];
                }
        const std::size_t index = m_cel.IndexOf(x, y);
        for (std::size_t i = 0; i < sums.size(); ++i) {
            std::uint8_t& own = m_planes[i][index];
            own = static_cast<std::uint8_t>(((255 - weight) * own + weight * (sums[i] / lines)) / 255);
        }
        std::uint8_t& alpha = m_cel.PlaneOf(Channel::Alpha)[index];
        alpha = std::max(alpha, static_cast<std::uint8_t>(weight));
        m_bounds.AddSpan(y, x, x + 1);
    }

    CCelImg& m_cel;
    CMaskWindow m_window;
    std::array<std::uint8_t*, 3> m_planes;
    int m_weight = 0;
    CPaintBounds m_bounds;
};

} // namespace

CPaintResult Smooth(CCelImg& image) {
    if (image.LineMask().empty() || image.GetLoadState() != LoadState::Cel)
        return {CStatus::Failure("Internal Error :  Smooth called with no cel b/w image"), {}};
    return PaintWithMemory([&image] { return CSmoothing(image).Run(); });
}

} // namespace velmor
