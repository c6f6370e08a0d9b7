#pragma once

#include "image/Geometry.h"

#include <cstdint>
#include <span>
#include <vector>

namespace velmor {

/// Peels lines down towards their skeleton with the parallel thinning of Z. Guo and R. W. Hall (1989): a layer goes
/// in two halves, and a pixel goes only if the lines around it stay joined without it.
///
/// At the border of the image a pixel has to be one that goes both if there is paper outside and if everything goes
/// on outside as it is at the border: so neither a line that leaves the image draws back from the border, nor does
/// one along the border go.
class CThinning {
public:
    /// May throw std::bad_alloc, as Peel() may.
    explicit CThinning(CSize size);

    /// A byte for each pixel of row y: 1 for lines, 0 for the rest.
    std::span<std::uint8_t> Row(int y) {
        return std::span(m_pixels).subspan(IndexOf(0, y), static_cast<std::size_t>(m_size.width));
    }

    /// Takes so many layers off all lines. Returns the pixels that have gone.
    std::vector<CPoint> Peel(int layers);

private:
    std::size_t IndexOf(int x, int y) const {
        return static_cast<std::size_t>(y + 1) * m_stride + static_cast<std::size_t>(x + 1);
    }
    bool Goes(CPoint at, int half) const;
    unsigned NeighboursBeyondBorder(CPoint at) const;

    CSize m_size;
    std::size_t m_stride;
    std::vector<std::uint8_t> m_pixels; ///< with one more around the image
};

} // namespace velmor
