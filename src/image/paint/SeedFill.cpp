#include "image/paint/SeedFill.h"

namespace velmor {

CFillBarrier::CFillBarrier(const CCelImg& cel)
    : m_cel(cel),
      m_width(cel.Width()),
      m_height(cel.Height()),
      m_wordsInRow(MaskWordsOf(cel.Width())),
      m_words(std::make_unique_for_overwrite<MaskWord[]>(OffsetOf(cel.Height()))),
      m_firstWords(std::make_unique_for_overwrite<MaskWord[]>(OffsetOf(cel.Height()))),
      m_visited(m_wordsInRow),
      m_isMade(static_cast<std::size_t>(cel.Height()), std::uint8_t{0}) {}

void CFillBarrier::Make(int y) {
    MaskWord* const row = m_words.get() + OffsetOf(y);
    LoadMaskRow(m_cel, y, {row, m_wordsInRow});
    row[m_wordsInRow - 1] |= MaskFrom(m_width % maskWordBits);
    std::copy_n(row, m_wordsInRow, m_firstWords.get() + OffsetOf(y));
    m_isMade[static_cast<std::size_t>(y)] = 1;
}

void CFillBarrier::ForgetVisits() {
    for (int y = 0; y < m_height; ++y)
        if (m_isMade[static_cast<std::size_t>(y)] != 0)
            std::copy_n(m_words.get() + OffsetOf(y), m_wordsInRow, m_firstWords.get() + OffsetOf(y));
}

void CSeedFill::Run(int x, int y) {
    if (x < 0 || y < 0 || x >= m_barrier.Width() || y >= m_barrier.Height() || IsBarrier(m_barrier.Row(y), x))
        return;
    Push(y, x, x, 1);
    Push(y + 1, x, x, -1);
    while (!m_segments.empty()) {
        const CSegment segment = m_segments.back();
        m_segments.pop_back();
        Follow(segment);
    }
}

void CSeedFill::Follow(const CSegment& segment) {
    const int left = segment.Left();
    const int right = segment.Right();
    const int direction = segment.Direction();
    const int y = segment.Row() + direction;
    MaskWord* const row = m_barrier.Row(y);

    int x = NextFree(row, left, right + 1);
    if (x > right)
        return;
    int start = x == left ? RunStart(row, left) : x;
    if (start < left)
        Push(y, start, left - 1, -direction);
    while (x <= right) {
        const int end = NextBarrier(row, x);
        AddBarrier(row, start, end);
        m_visited.AddSpan(y, start, end);
        Push(y, start, end - 1, direction);
        if (end > right + 1)
            Push(y, right + 1, end - 1, -direction);
        start = x = NextFree(row, end, right + 1);
    }
}

} // namespace velmor
