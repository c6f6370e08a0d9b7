#pragma once

#include "image/render/SourceMapping.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace velmor {

/// What of a strip of rows is hidden by layers that are drawn later, so that nothing below has to be drawn there.
/// Known in blocks, each some columns wide and as high as the strip.
class CStripCover {
public:
    static constexpr int blockColumns = 16;

    /// Nothing of a strip of `width` columns is covered.
    explicit CStripCover(int width) : m_width(width), m_covered(static_cast<std::size_t>(width / blockColumns)) {}

    /// Blocks that lie wholly in the strip.
    int BlockCount() const { return static_cast<int>(m_covered.size()); }
    void Clear() { m_covered.assign(m_covered.size(), 0); }
    void Cover(int block) { m_covered[static_cast<std::size_t>(block)] = 1; }
    bool IsCovered(int block) const { return m_covered[static_cast<std::size_t>(block)] != 0; }
    /// The columns that show what lies below, from left to right. Narrow covers between them are left out: to draw
    /// what nobody sees costs less there than to stop and begin again.
    /// Takes no memory for as many as MostOpenSpans().
    void FindOpenSpans(std::vector<CColumnSpan>& spans) const;
    std::size_t MostOpenSpans() const { return m_covered.size() / (leastBlocks + 1) + 2; }

private:
    static constexpr int leastBlocks = 2; ///< of a cover between open spans

    int m_width;
    std::vector<std::uint8_t> m_covered;
};

} // namespace velmor
