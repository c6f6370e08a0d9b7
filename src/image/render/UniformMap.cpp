#include "image/render/UniformMap.h"

#include "image/render/TileDistances.h"

#include <algorithm>
#include <iterator>

namespace velmor {

namespace {

constexpr int farthest = 255;

bool DiffersFromNeighbour(const CTileGrid<TileColor>& colors, int x, int y) {
    const TileColor own = colors.Row(y)[x];
    bool differs = false;
    for (int dy = -1; dy <= 1; ++dy)
        for (int dx = -1; dx <= 1; ++dx) {
            const TileColor other = colors.Row(y + dy)[x + dx];
            differs |= other != own && other != beyondImage;
        }
    return differs;
}

} // namespace

CUniformMap::CUniformMap(std::span<const TileColor> tileColors, int width, int height)
    : m_columns(TileCount(width)) {
    const auto columns = static_cast<int>(m_columns);
    const auto rows = static_cast<int>(TileCount(height));
    CTileGrid<TileColor> colors(columns, rows, beyondImage);
    for (int y = 0; y < rows; ++y)
        std::ranges::copy(tileColors.subspan(static_cast<std::size_t>(y) * m_columns, m_columns), colors.Row(y));

    CTileGrid<int> distances(columns, rows, farthest);
    for (int y = 0; y < rows; ++y)
        for (int x = 0; x < columns; ++x)
            if (IsMixedTile(colors.Row(y)[x]))
                distances.Row(y)[x] = 0;
            else if (DiffersFromNeighbour(colors, x, y))
                distances.Row(y)[x] = 1;
    SpreadDistances(distances);

    m_colors.reserve(tileColors.size());
    std::ranges::transform(tileColors, std::back_inserter(m_colors),
                           [](TileColor color) { return static_cast<std::uint32_t>(color); });
    m_distances.reserve(m_columns * static_cast<std::size_t>(rows));
    for (int y = 0; y < rows; ++y)
        std::transform(distances.Row(y), distances.Row(y) + columns, std::back_inserter(m_distances),
                       [](int distance) { return static_cast<std::uint8_t>(distance); });
}

} // namespace velmor
