#include "image/render/UniformMap.h"

#include <algorithm>
#include <iterator>

namespace velmor {

namespace {

constexpr int farthest = 255;

/// A grid of tiles with a border of one, so that every tile has eight neighbours.
template<class Value>
class CTileGrid {
public:
    CTileGrid(int columns, int rows, Value value)
        : m_stride(static_cast<std::size_t>(columns) + 2),
          m_values(m_stride * (static_cast<std::size_t>(rows) + 2), value) {}

    Value* Row(int y) { return m_values.data() + (static_cast<std::size_t>(y) + 1) * m_stride + 1; }
    const Value* Row(int y) const { return m_values.data() + (static_cast<std::size_t>(y) + 1) * m_stride + 1; }

private:
    std::size_t m_stride;
    std::vector<Value> m_values;
};

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

/// Distance by two passes, each looking at the neighbours that it has passed.
void SpreadDistances(CTileGrid<int>& distances, int columns, int rows) {
    for (int y = 0; y < rows; ++y) {
        const int* below = distances.Row(y - 1);
        int* own = distances.Row(y);
        for (int x = 0; x < columns; ++x)
            own[x] = std::min(own[x], 1 + std::min({below[x - 1], below[x], below[x + 1], own[x - 1]}));
    }
    for (int y = rows - 1; y >= 0; --y) {
        const int* above = distances.Row(y + 1);
        int* own = distances.Row(y);
        for (int x = columns - 1; x >= 0; --x)
            own[x] = std::min(own[x], 1 + std::min({above[x - 1], above[x], above[x + 1], own[x + 1]}));
    }
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
            if (colors.Row(y)[x] == mixedColors)
                distances.Row(y)[x] = 0;
            else if (DiffersFromNeighbour(colors, x, y))
                distances.Row(y)[x] = 1;
    SpreadDistances(distances, columns, rows);

    m_colors.reserve(tileColors.size());
    std::ranges::transform(tileColors, std::back_inserter(m_colors),
                           [](TileColor color) { return static_cast<std::uint32_t>(color); });
    m_distances.reserve(m_columns * static_cast<std::size_t>(rows));
    for (int y = 0; y < rows; ++y)
        std::transform(distances.Row(y), distances.Row(y) + columns, std::back_inserter(m_distances),
                       [](int distance) { return static_cast<std::uint8_t>(distance); });
}

} // namespace velmor
