#pragma once

#include "image/paint/MaskWords.h"
#include "image/paint/PaintBounds.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace velmor {

/// Where a fill may not go (any more): the line pixels of a cel, what lies beyond the right edge, and the pixels
/// visited so far. One bit a pixel; a row is made when it is first asked for, so that filling a small area of a
/// large cel costs little.
class CFillBarrier {
public:
    /// The lines of the cel must stay as they are while the barrier is used.
    explicit CFillBarrier(const CCelImg& cel);

    int Width() const { return m_width; }
    int Height() const { return m_height; }
    /// A row inside the image, in the layout of LoadMaskRow(); a set bit is a barrier. The bit after the last pixel
    /// is always set.
    MaskWord* Row(int y) {
        if (m_isMade[static_cast<std::size_t>(y)] == 0)
            Make(y);
        return m_words.get() + OffsetOf(y);
    }
    /// Counts what is visited up to now as a barrier that was there from the start.
    void ForgetVisits();
    /// Calls visit(y, x, endX) for every run of visited pixels inside a rectangle, from left to right, row by row.
    template<class Visit>
    void ForEachVisitedRun(const CRect& rect, Visit visit);

private:
    std::size_t OffsetOf(int y) const { return static_cast<std::size_t>(y) * m_wordsInRow; }
    void Make(int y);

    const CCelImg& m_cel;
    int m_width;
    int m_height;
    std::size_t m_wordsInRow;
    std::unique_ptr<MaskWord[]> m_words;
    std::unique_ptr<MaskWord[]> m_firstWords; ///< as they were without any visit
    std::vector<MaskWord> m_visited;          ///< of one row
    std::vector<std::uint8_t> m_isMade;
};

inline bool IsBarrier(const MaskWord* row, int x) {
    return (row[x / maskWordBits] >> (maskWordBits - 1 - x % maskWordBits) & 1) != 0;
}

/// The first barrier at x or to the right of it; there is always one at the row's end.
inline int NextBarrier(const MaskWord* row, int x) {
    int i = x / maskWordBits;
    MaskWord bits = row[i] & MaskFrom(x % maskWordBits);
    while (bits == 0)
        bits = row[++i];
    return i * maskWordBits + std::countl_zero(bits);
}

/// The first free pixel at x or to the right of it; `endX` when there is none before that.
inline int NextFree(const MaskWord* row, int x, int endX) {
    if (x >= endX)
        return endX;
    int i = x / maskWordBits;
    const int last = (endX - 1) / maskWordBits;
    MaskWord bits = ~row[i] & MaskFrom(x % maskWordBits);
    while (bits == 0 && i < last)
        bits = ~row[++i];
    return std::min(i * maskWordBits + std::countl_zero(bits), endX);
}

/// The first pixel of the free run that x, a free pixel, belongs to.
inline int RunStart(const MaskWord* row, int x) {
    int i = x / maskWordBits;
    MaskWord bits = row[i] & ~MaskFrom(x % maskWordBits);
    while (bits == 0 && i > 0)
        bits = row[--i];
    return bits == 0 ? 0 : i * maskWordBits + maskWordBits - std::countr_zero(bits);
}

/// Makes columns x to endX - 1 a barrier.
inline void AddBarrier(MaskWord* row, int x, int endX) {
    const int last = endX / maskWordBits;
    int i = x / maskWordBits;
    MaskWord bits = MaskFrom(x % maskWordBits);
    for (; i < last; ++i) {
        row[i] |= bits;
        bits = ~MaskWord{0};
    }
    row[last] |= bits & ~MaskFrom(endX % maskWordBits);
}

template<class Visit>
void CFillBarrier::ForEachVisitedRun(const CRect& rect, Visit visit) {
    for (int y = rect.y; y < rect.endY; ++y) {
        const MaskWord* const row = Row(y);
        const MaskWord* const first = m_firstWords.get() + OffsetOf(y);
        std::transform(row, row + m_wordsInRow, first, m_visited.begin(),
                       [](MaskWord now, MaskWord before) { return now & ~before; });
        m_visited.back() |= MaskFrom(m_width % maskWordBits);
        for (int x = NextBarrier(m_visited.data(), rect.x); x < rect.endX;) {
            const int end = NextFree(m_visited.data(), x, rect.endX);
            visit(y, x, end);
            x = NextBarrier(m_visited.data(), end);
        }
    }
}

/// A scan-line seed fill after Paul Heckbert, "A Seed Fill Algorithm", Graphics Gems, 1990: visits the 4-connected
/// area around a seed by runs of pixels. It holds 50000 segments at the most and drops what goes beyond, which
/// bounds its memory and leaves some of a very ragged area out.
class CSeedFill {
public:
    static constexpr std::size_t mostSegments = 50000;
    /// Rows and columns are kept in 16 bits: a larger image cannot be filled.
    static constexpr int largestSide = 32767;

    /// No side of the barrier may be over largestSide.
    explicit CSeedFill(CFillBarrier& barrier) : m_barrier(barrier) { m_segments.reserve(mostSegments); }

    /// Visits the area of a pixel, which may lie anywhere; one that is outside or a barrier does nothing. What is
    /// visited is a barrier from then on.
    void Run(int x, int y);
    /// The smallest rectangle around all that was visited.
    CRect Visited() const { return m_visited.Rect(); }

private:
    /// A run of pixels in `row`, from which `row + direction` is to be looked at. One word, written and read whole:
    /// reading back fields that were written one by one would wait for all the painting in between.
    class CSegment {
    public:
        CSegment(int row, int left, int right, int direction)
            : m_fields(Field(row, 0) | Field(left, 1) | Field(right, 2) | Field(direction, 3)) {}
        int Row() const { return At(0); }
        int Left() const { return At(1); }
        int Right() const { return At(2); } ///< the last column
        int Direction() const { return At(3); }

    private:
        static std::uint64_t Field(int value, int place) {
            return std::uint64_t{static_cast<std::uint16_t>(value)} << (16 * place);
        }
        int At(int place) const { return static_cast<std::int16_t>(m_fields >> (16 * place)); }

        std::uint64_t m_fields;
    };

    void Push(int row, int left, int right, int direction) {
        const int next = row + direction;
        if (m_segments.size() < mostSegments && next >= 0 && next < m_barrier.Height())
            m_segments.emplace_back(row, left, right, direction);
    }
    void Follow(const CSegment& segment);

    CFillBarrier& m_barrier;
    std::vector<CSegment> m_segments;
    CPaintBounds m_visited;
};

} // namespace velmor
