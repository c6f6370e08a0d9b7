#include "image/paint/LineEdges.h"

#include <algorithm>

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

} // namespace

CLineEdges::CLineEdges(const CLineMask& mask) : m_mask(mask), m_words(MaskWordsOf(mask.size.width)) {
    for (CRow& row : m_rows)
        row.words.assign(m_words + 2, 0);
    Load(m_rows[2], 0);
}

void CLineEdges::MoveTo(int y) {
    std::rotate(m_rows.begin(), m_rows.begin() + 1, m_rows.end());
    Load(m_rows[2], y + 1);
    m_anyLines.clear();
    if (!m_rows[0].hasLines && !m_rows[1].hasLines && !m_rows[2].hasLines)
        return;
    const MaskWord* const below = m_rows[0].words.data();
    const MaskWord* const own = m_rows[1].words.data();
    const MaskWord* const above = m_rows[2].words.data();
    const auto column = [=](std::size_t i) { return below[i] | own[i] | above[i]; };
    m_anyLines.resize(m_words);
    MaskWord* const any = m_anyLines.data();
    const std::size_t words = m_words;
    for (std::size_t i = 0; i < words; ++i)
        any[i] = column(i + 1) | column(i) << (maskWordBits - 1) | column(i + 2) >> (maskWordBits - 1);
}

void CLineEdges::Load(CRow& row, int y) {
    if (y >= m_mask.size.height) {
        std::ranges::fill(row.words, MaskWord{0});
        row.hasLines = false;
        return;
    }
    LoadMaskRow(m_mask, y, std::span(row.words).subspan(1, m_words));
    MaskWord any = 0;
    for (const MaskWord word : row.words)
        any |= word;
    row.hasLines = any != 0;
}

CLineEdges::CNeighbourhood CLineEdges::Around(std::size_t i) const {
    CBitCounts counts;
    for (const CRow& row : m_rows) {
        counts.Add(row.OneLeft(i));
        counts.Add(row.OneRight(i));
    }
    counts.Add(m_rows[0].words[i + 1]);
    counts.Add(m_rows[2].words[i + 1]);
    MaskWord paper = ~m_rows[1].words[i + 1];
    if (i + 1 == m_words)
        paper &= ~MaskFrom(m_mask.size.width % maskWordBits);

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

} // namespace velmor
