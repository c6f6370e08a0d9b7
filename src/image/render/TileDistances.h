#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace velmor {

constexpr std::uint8_t farthestTile = 255;

/// A grid of tiles with a border of one, so that every tile has eight neighbours. Tiles are counted from 0, those
/// of the border are -1 and the counts.
template<class Value>
class CTileGrid {
public:
    CTileGrid(int columns, int rows, Value value)
        : m_columns(columns), m_rows(rows), m_values(Stride() * (static_cast<std::size_t>(rows) + 2), value) {}

    int Columns() const { return m_columns; }
    int Rows() const { return m_rows; }
    Value* Row(int y) { return m_values.data() + (static_cast<std::size_t>(y) + 1) * Stride() + 1; }
    const Value* Row(int y) const { return m_values.data() + (static_cast<std::size_t>(y) + 1) * Stride() + 1; }

    /// Gives every tile of the border the value of the nearest one that it surrounds; there must be one.
    void ExtendToBorder() {
        for (int y = 0; y < m_rows; ++y) {
            Row(y)[-1] = Row(y)[0];
            Row(y)[m_columns] = Row(y)[m_columns - 1];
        }
        std::copy_n(Row(0) - 1, Stride(), Row(-1) - 1);
        std::copy_n(Row(m_rows - 1) - 1, Stride(), Row(m_rows) - 1);
    }

private:
    std::size_t Stride() const { return static_cast<std::size_t>(m_columns) + 2; }

    int m_columns;
    int m_rows;
    std::vector<Value> m_values;
};

/// Makes each tile's number the least of n plus the tiles, along the farther axis, to a tile with the number n. The
/// border counts as any other tile and stays as it is. What would be farther than farthestTile counts as that far.
void SpreadDistances(CTileGrid<std::uint8_t>& distances);

} // namespace velmor
