#pragma once

#include "image/Geometry.h"
#include "image/paint/MaskWords.h"

#include <algorithm>
#include <span>
#include <vector>

namespace velmor {

/// One bit for each pixel of an image, in rows of words as LoadMaskRow() has them. Bits beyond the last pixel are
/// clear. Making one may throw std::bad_alloc.
class CMaskPlane {
public:
    CMaskPlane() = default;
    /// All clear.
    CMaskPlane(int width, int height);
    /// The lines of a cel.
    explicit CMaskPlane(const CCelImg& cel);

    int Width() const { return m_width; }
    int Height() const { return m_height; }
    bool IsEmpty() const { return m_words.empty(); }
    bool Contains(CPoint at) const { return at.x >= 0 && at.y >= 0 && at.x < m_width && at.y < m_height; }

    std::span<MaskWord> Row(int y) { return {&m_words[OffsetOf(y)], m_wordsInRow}; }
    std::span<const MaskWord> Row(int y) const { return {&m_words[OffsetOf(y)], m_wordsInRow}; }
    /// Of a pixel inside the image.
    bool Has(int x, int y) const {
        return (m_words[OffsetOf(y) + static_cast<std::size_t>(x / maskWordBits)] >>
                    (maskWordBits - 1 - x % maskWordBits) &
                1) != 0;
    }
    void Set(int x, int y) { SetRun(y, x, x + 1); }
    /// Sets columns x to endX - 1; there must be at least one, and all inside the image.
    void SetRun(int y, int x, int endX);
    /// Sets what is set in another plane of the same size.
    void Add(const CMaskPlane& other);
    /// Clears what is set in another plane of the same size.
    void Remove(const CMaskPlane& other);

    /// Calls visit(x, endX) for every run of equal bits in columns x to endX - 1 of a row that has the value
    /// wanted, from left to right.
    template<class Visit>
    void ForEachRun(int y, int firstX, int endX, bool value, Visit visit) const;
    /// Calls visit(y, x, endX) for every run of set pixels inside a rectangle, row by row.
    template<class Visit>
    void ForEachRun(const CRect& rect, Visit visit) const {
        for (int y = rect.y; y < rect.endY; ++y)
            ForEachRun(y, rect.x, rect.endX, true, [&](int x, int endX) { visit(y, x, endX); });
    }

private:
    std::size_t OffsetOf(int y) const { return static_cast<std::size_t>(y) * m_wordsInRow; }

    int m_width = 0;
    int m_height = 0;
    std::size_t m_wordsInRow = 0;
    std::vector<MaskWord> m_words;
};

/// The first pixel at x or to the right of it whose bit, flipped by `flip`, is set; endX when there is none before.
inline int NextSet(const MaskWord* row, MaskWord flip, int x, int endX) {
    if (x >= endX)
        return endX;
    int i = x / maskWordBits;
    const int last = (endX - 1) / maskWordBits;
    MaskWord bits = (row[i] ^ flip) & MaskFrom(x % maskWordBits);
    while (bits == 0 && i < last)
        bits = row[++i] ^ flip;
    return std::min(i * maskWordBits + std::countl_zero(bits), endX);
}

template<class Visit>
void CMaskPlane::ForEachRun(int y, int firstX, int endX, bool value, Visit visit) const {
    const MaskWord* const row = &m_words[OffsetOf(y)];
    const MaskWord flip = value ? 0 : ~MaskWord{0};
    for (int x = NextSet(row, flip, firstX, endX); x < endX;) {
        const int end = NextSet(row, ~flip, x, endX);
        visit(x, end);
        x = NextSet(row, flip, end, endX);
    }
}

} // namespace velmor
