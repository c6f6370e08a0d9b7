#pragma once

#include "image/Geometry.h"
#include "image/render/PixelPacking.h"
#include "image/render/PixelRow.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace velmor {

/// The pixels of an image, a word each, in vertical stripes.
///
/// A row of a rotated image runs through many rows of the source. Were these as long as the image is wide, each
/// would lie in a memory page of its own, and the processor would spend most of its time finding pages. A row of a
/// stripe is short, so that a page holds several. It ends with a copy of the next stripe's first pixels, so that a
/// group of pixels and the neighbour of the last can be read from any pixel on.
class CStripedPixels {
public:
    static constexpr int stripeBits = 7;
    static constexpr int stripeSide = 1 << stripeBits;
    static constexpr int rowPitch = stripeSide + CPixelRow::slack;

    CStripedPixels() = default;
    /// The pixels of an area of an image, without meaning yet. May throw std::bad_alloc.
    explicit CStripedPixels(const CRect& area);

    /// What is kept of the image.
    const CRect& Area() const { return m_area; }
    /// The columns of the image, which is `width` wide, that SetRow() looks at: somewhat more than the area's.
    int FirstColumn() const { return std::max(m_firstStripe * stripeSide - shift, 0); }
    int EndColumn(int width) const {
        return std::min((m_firstStripe + m_stripes - 1) * stripeSide - shift + rowPitch, width);
    }
    /// Sets a row of the area from the image's row of `width` pixels. Returns whether all of it that is kept is
    /// opaque.
    bool SetRow(int y, const CChannelRows& channels, int width);
    /// For a pixel of the area.
    void Set(int x, int y, std::uint32_t pixel);

    /// Blue in the low byte, then green, red, alpha; 0 outside the area.
    std::uint32_t At(int x, int y) const {
        const bool isKept = x >= m_area.x && x < m_area.endX && y >= m_area.y && y < m_area.endY;
        return isKept ? Origin()[OffsetOf(x, y)] : 0;
    }

    /// Pixel (x, y) of the area stands at Origin() + OffsetOf(x, y). What would be up to one pixel left of or below
    /// the area, or two to the right or above, may be read; it means nothing.
    const std::uint32_t* Origin() const { return m_storage.get() + m_origin; }
    std::ptrdiff_t OffsetOf(int x, int y) const {
        const std::ptrdiff_t stored = x + shift;
        return stored + y * std::ptrdiff_t{rowPitch} + (stored >> stripeBits) * m_stripeJump;
    }
    /// The columns by which pixels are stored further right, so that the one left of the image has a place.
    static constexpr int shift = 1;
    /// What is added to an offset from stripe to stripe besides the stripe's width.
    int StripeJump() const { return m_stripeJump; }

    std::size_t ByteCount() const { return m_size * sizeof(std::uint32_t); }

private:
    static constexpr std::size_t margin = std::size_t{2} * rowPitch;

    CRect m_area;
    int m_firstStripe = 0;
    int m_stripes = 0;
    std::ptrdiff_t m_origin = 0; ///< of the image, which need not be in the storage
    int m_stripeJump = 0;
    std::size_t m_size = 0;
    std::unique_ptr<std::uint32_t[]> m_storage;
};

} // namespace velmor
