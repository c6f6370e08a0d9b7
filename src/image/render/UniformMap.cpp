#include "image/render/UniformMap.h"

#include "image/render/TileDistances.h"

#include <algorithm>
#include <iterator>

namespace velmor {

namespace {

/// Stands for more than one colour; a transparent tile's is 0.
constexpr std::uint32_t mixed = 1;

std::uint32_t CodeOf(TileColor color) {
    return IsMixedTile(color) ? mixed : static_cast<std::uint32_t>(color);
}

/// 0 for what is mixed, 1 for what has a neighbour of another colour.
void FindEdges(const CTileGrid<std::uint32_t>& colors, int y, std::uint8_t* distances) {
    const std::uint32_t* const below = colors.Row(y - 1);
    const std::uint32_t* const row = colors.Row(y);
    const std::uint32_t* const above = colors.Row(y + 1);
    for (int x = 0; x < colors.Columns(); ++x) {
        const std::uint32_t own = row[x];
        std::uint32_t differing = (row[x - 1] ^ own) | (row[x + 1] ^ own);
        for (int column = x - 1; column <= x + 1; ++column)
            differing |= (below[column] ^ own) | (above[column] ^ own);
        distances[x] = own == mixed ? std::uint8_t{0} : differing != 0 ? std::uint8_t{1} : farthestTile;
    }
}

} // namespace

CUniformMap::CUniformMap(std::span<const TileColor> tileColors, int width, int height)
    : m_columns(TileCount(width)) {
    const auto columns = static_cast<int>(m_columns);
    const auto rows = static_cast<int>(TileCount(height));
    CTileGrid<std::uint32_t> colors(columns, rows, 0);
    for (int y = 0; y < rows; ++y)
        std::ranges::transform(tileColors.subspan(static_cast<std::size_t>(y) * m_columns, m_columns),
                               colors.Row(y), CodeOf);
    colors.ExtendToBorder(); // beyond the image all is alike

    CTileGrid<std::uint8_t> distances(columns, rows, farthestTile);
    for (int y = 0; y < rows; ++y)
        FindEdges(colors, y, distances.Row(y));
    SpreadDistances(distances);

    m_colors.reserve(tileColors.size());
    std::ranges::transform(tileColors, std::back_inserter(m_colors),
                           [](TileColor color) { return static_cast<std::uint32_t>(color); });
    m_distances.reserve(m_columns * static_cast<std::size_t>(rows));
    for (int y = 0; y < rows; ++y)
        m_distances.insert(m_distances.end(), distances.Row(y), distances.Row(y) + columns);
}

} // namespace velmor
