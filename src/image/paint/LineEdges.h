#pragma once

#include "image/paint/MaskWords.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace velmor {

/// A pixel that smoothing changes.
struct CLineEdge {
    int x = 0;
    int weight = 0;     ///< of the lines' colour, out of 255
    unsigned lines = 0; ///< which neighbours are line pixels: the one at (x - dx, y + dy) is bit 3 * dy + dx + 4

    int LineCount() const { return std::popcount(lines); }
    /// One channel of the pixel after smoothing; `sum` is that of its line pixels.
    std::uint8_t Blend(int own, int sum) const {
        // A table of 1 / n in 16 bits, rounded up: exact, as the sums are at most 8 * 255.
        constexpr std::array<int, 9> parts{0, 65536, 32769, 21846, 16385, 13108, 10923, 9363, 8193};
        const int mean = sum * parts[static_cast<std::size_t>(LineCount())] >> 16;
        return static_cast<std::uint8_t>(((255 - weight) * own + weight * mean) / 255);
    }
};

/// Calls visit(n) for each neighbour n of CLineEdge::lines.
template<class Visit>
void ForEachLine(unsigned lines, Visit visit) {
    for (; lines != 0; lines &= lines - 1)
        visit(static_cast<std::size_t>(std::countr_zero(lines)));
}

/// The pixels beside a cel's lines that smoothing changes, row by row. It changes no line pixel, so that a pixel's
/// new colour depends on its own and on colours that stay.
class CLineEdges {
public:
    /// Keeps the view. May throw std::bad_alloc.
    explicit CLineEdges(const CLineMask& mask);

    /// Calls visit(edge) for the pixels of row y from left to right. To be called with y = 0, 1, 2, ...
    template<class Visit>
    void VisitRow(int y, Visit visit) {
        MoveTo(y);
        for (std::size_t i = 0; i < m_anyLines.size(); ++i)
            if (m_anyLines[i] != 0)
                VisitWord(i, Around(i), visit);
    }

private:
    /// The pixels of a word by the number of line pixels among their neighbours; line pixels themselves excepted.
    struct CNeighbourhood {
        MaskWord any = 0;  ///< at least one
        MaskWord many = 0; ///< three or more: those that change
        MaskWord three = 0;
        MaskWord four = 0;
        MaskWord five = 0;
    };
    /// A row of the mask with an empty word at either end.
    struct CRow {
        std::vector<MaskWord> words;
        bool hasLines = false; ///< false: all words are 0

        MaskWord OneLeft(std::size_t i) const { return words[i + 1] >> 1 | words[i] << (maskWordBits - 1); }
        MaskWord OneRight(std::size_t i) const { return words[i + 1] << 1 | words[i + 2] >> (maskWordBits - 1); }
    };

    static constexpr bool Has(MaskWord bits, int bit) { return (bits >> (maskWordBits - 1 - bit) & 1) != 0; }

    void MoveTo(int y);
    void Load(CRow& row, int y);
    CNeighbourhood Around(std::size_t i) const;
    unsigned LinesAround(std::size_t i, int bit) const {
        unsigned lines = 0;
        for (std::size_t row = m_rows.size(); row-- > 0;) {
            // The three bits around it stand in one of the shifted words, whichever half of the word it is in.
            const MaskWord around =
                bit < maskWordBits / 2 ? m_rows[row].OneLeft(i) << bit : m_rows[row].OneRight(i) << (bit - 2);
            lines = lines << 3 | static_cast<unsigned>(around >> (maskWordBits - 3));
        }
        return lines;
    }

    /// A pixel with five line neighbours takes the weight of the pixel with a line neighbour before it, however far
    /// back; one and two neighbours weigh nothing and change nothing.
    template<class Visit>
    void VisitWord(std::size_t i, const CNeighbourhood& around, Visit& visit) {
        const int firstX = static_cast<int>(i) * maskWordBits;
        ForEachBit(around.many, 0, [&](int bit) {
            if (!Has(around.five, bit))
                m_weight = Has(around.three, bit) ? 64 : Has(around.four, bit) ? 128 : 192;
            else if (const MaskWord before = around.any & ~MaskFrom(bit); before != 0)
                m_weight = Has(around.many, maskWordBits - 1 - std::countr_zero(before)) ? m_weight : 0;
            if (m_weight > 0)
                visit(CLineEdge{firstX + bit, m_weight, LinesAround(i, bit)});
        });
        if (around.any != 0 && (around.any & (~around.any + 1) & around.many) == 0)
            m_weight = 0;
    }

    CLineMask m_mask;
    std::size_t m_words;
    std::array<CRow, 3> m_rows;       ///< the one below, the row itself, the one above
    std::vector<MaskWord> m_anyLines; ///< of a word and those around it; none when there are no lines at all
    int m_weight = 0;
};

} // namespace velmor
