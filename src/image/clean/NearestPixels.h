#pragma once

#include "image/Geometry.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace velmor {

/// Finds, for any pixel of an image, the nearest of certain ones ("marked") as far as a given distance.
class CNearestPixels {
public:
    static constexpr int mostReach = 100;

    /// Sets a byte for every pixel of row y: other than 0 where it is marked.
    using MarkRow = std::function<void(int y, std::span<std::uint8_t> row)>;

    /// `reach` is 1 to mostReach pixels, between the middles of pixels. May throw std::bad_alloc.
    CNearestPixels(CSize size, int reach, const MarkRow& markRow);

    /// The nearest marked pixel, which may be `at` itself; nothing when there is none within reach. Of several that
    /// are equally far the one in the nearest column, then the left one, then the lower one.
    std::optional<CPoint> Find(CPoint at) const;

private:
    static constexpr std::int8_t none = 127;

    void LookDown(const MarkRow& markRow);
    void LookUp();
    std::int8_t OffsetAt(int x, int y) const {
        return m_offsets[static_cast<std::size_t>(y) * static_cast<std::size_t>(m_size.width) +
                         static_cast<std::size_t>(x)];
    }

    CSize m_size;
    int m_reach;
    std::vector<std::int8_t> m_offsets; ///< of each pixel, rows to the nearest marked one of its column
};

} // namespace velmor
