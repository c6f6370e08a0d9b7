#include "image/render/TileDistances.h"

namespace velmor {

namespace {

std::uint8_t Farther(std::uint8_t distance, std::uint8_t tiles) {
    const auto farthestBefore = static_cast<std::uint8_t>(farthestTile - tiles);
    return static_cast<std::uint8_t>(std::min(distance, farthestBefore) + tiles);
}

/// Spreads along rows. Each step doubles how far a number has come, for all tiles of a row at once: the time does
/// not depend on what stands there, and the processor's vectors do it.
class CRowSpreading {
public:
    explicit CRowSpreading(int columns)
        : m_size(columns + 2),
          m_from(static_cast<std::size_t>(m_size + 2 * mostTiles), farthestTile),
          m_to(m_from) {}

    void Spread(std::uint8_t* row) {
        std::copy_n(row - 1, m_size, m_from.data() + mostTiles);
        for (int tiles = 1; tiles <= std::min(mostTiles, m_size - 1); tiles *= 2) {
            Step(m_from.data() + mostTiles, tiles, m_to.data() + mostTiles);
            m_from.swap(m_to);
        }
        std::copy_n(m_from.data() + mostTiles + 1, m_size - 2, row);
    }

private:
    /// Steps of 1, 2, 4, ... and this reach as far as there are numbers.
    static constexpr int mostTiles = 128;

    void Step(const std::uint8_t* from, int tiles, std::uint8_t* to) const {
        for (int x = 0; x < m_size; ++x)
            to[x] = std::min(from[x],
                             Farther(std::min(from[x - tiles], from[x + tiles]), static_cast<std::uint8_t>(tiles)));
    }

    int m_size; ///< of a row with its border
    std::vector<std::uint8_t> m_from;
    std::vector<std::uint8_t> m_to;
};

void SpreadFrom(const std::uint8_t* neighbours, std::uint8_t* row, int columns) {
    for (int x = 0; x < columns; ++x)
        row[x] = std::min(row[x], Farther(std::min({neighbours[x - 1], neighbours[x], neighbours[x + 1]}), 1));
}

} // namespace

// The way to a tile goes along its row and then from row to row, straight or diagonally.
void SpreadDistances(CTileGrid<std::uint8_t>& distances) {
    const int columns = distances.Columns();
    CRowSpreading spreading(columns);
    for (int y = 0; y < distances.Rows(); ++y)
        spreading.Spread(distances.Row(y));
    for (int y = 0; y < distances.Rows(); ++y)
        SpreadFrom(distances.Row(y - 1), distances.Row(y), columns);
    for (int y = distances.Rows() - 1; y >= 0; --y)
        SpreadFrom(distances.Row(y + 1), distances.Row(y), columns);
}

} // namespace velmor
