#pragma once

#include <cstddef>
#include <vector>

namespace velmor {

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

private:
    std::size_t Stride() const { return static_cast<std::size_t>(m_columns) + 2; }

    int m_columns;
    int m_rows;
    std::vector<Value> m_values;
};

/// Makes each tile's number the least of n plus the tiles, along the farther axis, to a tile with the number n. The
/// border counts as any other tile and stays as it is.
void SpreadDistances(CTileGrid<int>& distances);

} // namespace velmor
