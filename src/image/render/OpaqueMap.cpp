#include "image/render/OpaqueMap.h"

#include "image/render/TileDistances.h"

#include <algorithm>

namespace velmor {

COpaqueMap::COpaqueMap(std::span<const TileColor> tileColors, int width, int height)
    : m_columns(CUniformMap::TileCount(width)) {
    if (std::ranges::none_of(tileColors, IsOpaqueTile))
        return;
    CTileGrid<std::uint8_t> distances(static_cast<int>(m_columns), static_cast<int>(CUniformMap::TileCount(height)),
                                      0);
    m_distances.reserve(tileColors.size());
    // A tile that the image cuts off counts as one that is not opaque, as nothing is beyond the image.
    const int wholeColumns = width >> CUniformMap::tileBits;
    const int wholeRows = height >> CUniformMap::tileBits;
    for (int y = 0; y < wholeRows; ++y)
        for (int x = 0; x < wholeColumns; ++x)
            if (IsOpaqueTile(tileColors[static_cast<std::size_t>(y) * m_columns + static_cast<std::size_t>(x)]))
                distances.Row(y)[x] = farthestTile;
    SpreadDistances(distances);
    for (int y = 0; y < distances.Rows(); ++y)
        m_distances.insert(m_distances.end(), distances.Row(y), distances.Row(y) + distances.Columns());
}

} // namespace velmor
