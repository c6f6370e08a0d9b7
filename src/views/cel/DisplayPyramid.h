#pragma once

#include "image/DisplayBitmap.h"
#include "image/Geometry.h"
#include "image/RealPoint.h"

#include <cstdint>
#include <span>
#include <vector>

namespace velmor {

/// A display bitmap and smaller ones made of it, each half as large as the one before, so that a view that shrinks
/// and turns it finds the mean of the pixels that fall together in one on the screen (the published name is mipmap:
/// L. Williams, "Pyramidal parametrics", 1983). Smaller ones are made when they are first asked for, and redone
/// only where the bitmap has changed. Colours are 0x00rrggbb.
class CDisplayPyramid {
public:
    /// The bitmap is another one, or has another size.
    void Clear();
    /// These pixels of it have changed.
    void Change(const CRect& pixels) { m_changed = Union(m_changed, pixels); }
    /// Has ready what is needed to show the bitmap, of which `size` are the image's, at a factor.
    void Prepare(const CDisplayBitmap& bitmap, CSize size, double factor);

    /// The colours at points `step` apart, in image coordinates: the first of them is `skipped` steps from `start`.
    /// Each is mixed of the four pixels around it at the size that was prepared. All points are inside the image.
    void Sample(CRealPoint start, CRealPoint step, int skipped, std::span<std::uint32_t> colors) const;

private:
    struct CLevel {
        CSize size;
        std::vector<std::uint32_t> pixels; ///< bottom row first
        CRect stale;

        std::uint32_t* Row(int y) {
            return pixels.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(size.width);
        }
        const std::uint32_t* Row(int y) const {
            return pixels.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(size.width);
        }
    };

    void SpreadChange();
    static void Copy(const CDisplayBitmap& bitmap, CLevel& to);
    static void Halve(const CLevel& from, CLevel& to);

    std::vector<CLevel> m_levels; ///< those that have been asked for
    CRect m_changed;
    std::size_t m_level = 0; ///< that is prepared
};

} // namespace velmor
