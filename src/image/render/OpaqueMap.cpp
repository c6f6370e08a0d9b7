#include "image/render/OpaqueMap.h"

#include "image/render/TileDistances.h"

#include <algorithm>
#include <iterator>

namespace velmor {

COpaqueMap::COpaqueMap(std::span<const TileColor> tileColors, int width, int height)
    : m_columns(CUniformMap::TileCount(width)) {
    if (std::ranges::none_of(tileColors, IsOpaqueTile))
        return;
    constexpr int farthest = 255;
    CTileGrid<int> distances(static_cast<int>(m_columns), static_cast<int>(CUniformMap::TileCount(height)), 0);
    m_distances.reserve(tileColors.size());
    // A tile that the image cuts off counts as one that is not opaque, as nothing is beyond the image.
    const int wholeColumns = width >> CUniformMap::tileBits;
    const int wholeRows = height >> CUniformMap::tileBits;
    for (int y = 0; y < wholeRows; ++y)
        for (int x = 0; x < wholeColumns; ++x)
            if (IsOpaqueTile(tileColors[static_cast<std::size_t>(y) * m_columns + static_cast<std::size_t>(x)]))
                distances.Row(y)[x] = farthest;
    SpreadDistances(distances);
    for (int y = 0; y < distances.Rows(); ++y)
        std::transform(distances.Row(y), distances.Row(y) + distances.Columns(), std::back_inserter(m_distances),
                       [](int distance) { return static_cast<std::uint8_t>(distance); });
}

} // namespace velmor
