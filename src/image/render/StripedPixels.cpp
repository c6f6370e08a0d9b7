#include "image/render/StripedPixels.h"

#include "platform/process/Memory.h"

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
    PreferLargePages(m_storage.get(), ByteCount());
}

bool CStripedPixels::SetRow(int y, const CChannelRows& channels, int width) {
    bool isOpaque = true;
    std::uint32_t* row = m_storage.get() + margin + std::ptrdiff_t{y - m_area.y} * rowPitch;
    for (int stripe = 0; stripe < m_stripes; ++stripe, row += std::ptrdiff_t{m_stripeJump} + stripeSide) {
        const int left = (m_firstStripe + stripe) * stripeSide - shift; // the stripe's first pixel
        const int first = std::max(left, 0);
        const int end = std::min(left + rowPitch, width);
        if (first >= end)
            continue;
        CChannelRows part = channels;
        for (const std::uint8_t*& channel : part)
            channel += first;
        isOpaque &= InterleaveChannels(part, static_cast<std::size_t>(end - first), row + (first - left));
    }
    return isOpaque;
}

void CStripedPixels::Set(int x, int y, std::uint32_t pixel) {
    std::uint32_t* const place = m_storage.get() + m_origin + OffsetOf(x, y);
    *place = pixel;
    const int stored = x + shift;
    if (stored % stripeSide < rowPitch - stripeSide && stored / stripeSide > m_firstStripe)
        *(place - m_stripeJump) = pixel; // the copy at the end of the stripe before
}

} // namespace velmor
