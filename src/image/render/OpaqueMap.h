#pragma once

#include "image/render/UniformMap.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace velmor {

/// Where an image hides all that lies below it: whatever its colours are, none of it is transparent at all. Kept in
/// the tiles of CUniformMap.
class COpaqueMap {
public:
    COpaqueMap() = default;
    /// `tileColors`: row after row, for an image of width x height pixels.
    COpaqueMap(std::span<const TileColor> tileColors, int width, int height);

    /// Whether no tile is opaque.
    bool IsEmpty() const { return m_distances.empty(); }
    /// All pixels that are at most so many away from (x, y) along either axis are in the image and opaque. Negative
    /// when that is not known. The point lies in an image that is not empty.
    int ReachAt(int x, int y) const {
        const auto index = static_cast<std::size_t>(y >> CUniformMap::tileBits) * m_columns +
                           static_cast<std::size_t>(x >> CUniformMap::tileBits);
        return (m_distances[index] - 1) * CUniformMap::tileSide;
    }

    std::size_t ByteCount() const { return m_distances.size(); }

private:
    std::size_t m_columns = 0;
    std::vector<std::uint8_t> m_distances; ///< in tiles, to the nearest one that is not opaque
};

} // namespace velmor
