#include "image/render/StripedPixels.h"

#include <algorithm>

namespace velmor {

CStripedPixels::CStripedPixels(int width, int height)
    : m_width(width),
      m_stripes(((width + shift) >> stripeBits) + 1),
      m_stripeJump(height * rowPitch - stripeSide),
      m_size(static_cast<std::size_t>(m_stripes) * static_cast<std::size_t>(height) * rowPitch + 2 * margin),
      m_storage(std::make_unique_for_overwrite<std::uint32_t[]>(m_size)) {}

void CStripedPixels::SetRow(int y, std::span<const std::uint32_t> pixels) {
    for (int stripe = 0; stripe < m_stripes; ++stripe) {
        const int first = std::max(stripe * stripeSide - shift, 0);
        const int end = std::min(stripe * stripeSide - shift + rowPitch, m_width);
        if (first >= end)
            continue;
        const std::ptrdiff_t inStripe = first + shift - stripe * stripeSide;
        const std::ptrdiff_t row =
            stripe * (std::ptrdiff_t{m_stripeJump} + stripeSide) + std::ptrdiff_t{y} * rowPitch;
        std::copy_n(pixels.data() + first, end - first, m_storage.get() + margin + row + inStripe);
    }
}

} // namespace velmor
