#include "image/paint/MaskPlane.h"

#include <functional>

namespace velmor {

CMaskPlane::CMaskPlane(int width, int height)
    : m_width(width),
      m_height(height),
      m_wordsInRow(MaskWordsOf(width)),
      m_words(m_wordsInRow * static_cast<std::size_t>(height)) {}

CMaskPlane::CMaskPlane(const CCelImg& cel) : CMaskPlane(cel.Width(), cel.Height()) {
    for (int y = 0; y < m_height; ++y)
        LoadMaskRow(cel, y, Row(y));
}

void CMaskPlane::SetRun(int y, int x, int endX) {
    const std::span<MaskWord> row = Row(y);
    auto i = static_cast<std::size_t>(x / maskWordBits);
    const auto last = static_cast<std::size_t>(endX / maskWordBits);
    MaskWord bits = MaskFrom(x % maskWordBits);
    for (; i < last; ++i) {
        row[i] |= bits;
        bits = ~MaskWord{0};
    }
    row[last] |= bits & ~MaskFrom(endX % maskWordBits);
}

void CMaskPlane::Add(const CMaskPlane& other) {
    std::ranges::transform(m_words, other.m_words, m_words.begin(), std::bit_or<>());
}

void CMaskPlane::Remove(const CMaskPlane& other) {
    std::ranges::transform(m_words, other.m_words, m_words.begin(),
                           [](MaskWord bits, MaskWord taken) { return bits & ~taken; });
}

} // namespace velmor
