#pragma once

#include "image/Geometry.h"

#include <algorithm>
#include <limits>

namespace velmor {

/// Grows around the pixels that an operation changes.
class CPaintBounds {
public:
    /// Adds columns x to endX - 1 of row y; there must be at least one.
    void AddSpan(int y, int x, int endX) {
        m_rect = {std::min(m_rect.x, x), std::min(m_rect.y, y), std::max(m_rect.endX, endX),
                  std::max(m_rect.endY, y + 1)};
    }
    /// Empty (all zero) when nothing was added.
    CRect Rect() const { return m_rect.IsEmpty() ? CRect{} : m_rect; }

private:
    static constexpr int far = std::numeric_limits<int>::max();
    CRect m_rect{far, far, 0, 0};
};

} // namespace velmor
