#pragma once

#include "image/CelImg.h"
#include "image/Geometry.h"

#include <cstdint>
#include <vector>

namespace velmor {

/// What is dark on a page: the lines of a cel, or of a picture what is darker than a threshold. A large page is
/// made smaller by a whole number, one dark pixel making its square dark, so that what looks at it takes no longer
/// than for a large scan.
class CDarkGrid {
public:
    static constexpr int longestSide = 4096;

    /// `threshold` 0 to 255, for pictures: a grey level below it is dark. May throw std::bad_alloc.
    CDarkGrid(const CCelImg& image, int threshold);

    CSize Size() const { return m_size; }
    /// Pixels of the page, in each direction, for one of the grid.
    int Scale() const { return m_scale; }
    /// Inside the grid.
    bool IsDark(int x, int y) const { return m_dark[IndexOf(x, y)] != 0; }

    /// Makes everything dark that is at most `pixels` away from it; below 0, light what is so near to light.
    void Grow(int pixels);

private:
    std::size_t IndexOf(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(m_size.width) + static_cast<std::size_t>(x);
    }

    CSize m_size;
    int m_scale;
    std::vector<std::uint8_t> m_dark;
};

} // namespace velmor
