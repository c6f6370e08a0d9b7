#pragma once

#include "image/CelImg.h"

#include <cstdint>
#include <vector>

namespace velmor {

/// What of a drawing can be seen through another sheet of paper: its lines, and its paint where that is asked for.
/// Never the paper.
struct CInk {
    CSize size;                      ///< of the drawing
    CRect area;                      ///< holds all that there is
    std::vector<std::uint8_t> cover; ///< the area's pixels, bottom row first: 0 for nothing to 255

    bool IsEmpty() const { return cover.empty(); }
    std::size_t ByteCount() const { return sizeof(*this) + cover.capacity(); }
    /// 0 beside the area.
    std::uint8_t At(int x, int y) const {
        const bool isInside = x >= area.x && x < area.endX && y >= area.y && y < area.endY;
        return isInside ? *RowAt(x, y) : std::uint8_t{0};
    }
    /// Where a pixel of the area stands.
    const std::uint8_t* RowAt(int x, int y) const {
        return cover.data() + static_cast<std::size_t>(y - area.y) * static_cast<std::size_t>(area.endX - area.x) +
               static_cast<std::size_t>(x - area.x);
    }
};

/// The ink of an image. A line counts by its opacity, whatever its colour; paint by half of its darkness, so that
/// lines stand out from it. A picture, which has no lines, counts by its darkness in any case. Empty when nothing
/// is loaded. May throw std::bad_alloc.
CInk InkOf(const CCelImg& image, bool withPaint);

} // namespace velmor
