#include "image/render/StripedPixels.h"

#include <algorithm>

namespace velmor {

CStripedPixels::CStripedPixels(const CRect& area)
    : m_area(area),
      m_firstStripe((area.x + shift - 1) >> stripeBits),
      m_stripes(((area.endX + shift) >> stripeBits) + 1 - m_firstStripe) {
    const std::ptrdiff_t stripeSize = std::ptrdiff_t{area.endY - area.y} * rowPitch;
    m_stripeJump = static_cast<int>(stripeSize - stripeSide);
    m_origin = static_cast<std::ptrdiff_t>(margin) - std::ptrdiff_t{area.y} * rowPitch - m_firstStripe * stripeSize;
    m_size = static_cast<std::size_t>(m_stripes * stripeSize) + 2 * margin;
    m_storage = std::make_unique_for_overwrite<std::uint32_t[]>(m_size);
}

void CStripedPixels::SetRow(int y, std::span<const std::uint32_t> pixels) {
    const int width = static_cast<int>(pixels.size());
    for (int stripe = 0; stripe < m_stripes; ++stripe) {
        const int left = (m_firstStripe + stripe) * stripeSide - shift; // the stripe's first pixel
        const int first = std::max(left, 0);
        const int end = std::min(left + rowPitch, width);
        if (first >= end)
            continue;
        const std::ptrdiff_t row =
            stripe * (std::ptrdiff_t{m_stripeJump} + stripeSide) + std::ptrdiff_t{y - m_area.y} * rowPitch;
        std::copy_n(pixels.data() + first, end - first, m_storage.get() + margin + row + (first - left));
    }
}

} // namespace velmor
