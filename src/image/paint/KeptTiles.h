#pragma once

#include "image/CelImg.h"
#include "image/Geometry.h"
#include "image/paint/TileRuns.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

namespace velmor {

/// Pieces of an image as they were before they were painted on, in tiles of 64 by 64 pixels, so that a stroke costs
/// what it touches. All calls are for one image, whose size stays the same.
class CKeptTiles {
public:
    /// Keeps every tile that the rectangle touches as it is now, unless it is kept already; what lies outside the
    /// image is left out. May throw std::bad_alloc; what is kept by then stays kept.
    void Keep(const CCelImg& image, const CRect& rect);
    /// Lets go of the tiles that the rectangle does not touch.
    void KeepOnly(const CRect& rect);
    void Clear() { m_tiles.clear(); }

    std::size_t Count() const { return m_tiles.size(); }

    /// The bytes of each tile as TileBytes() gives them.
    const std::map<TilePlace, std::vector<std::uint8_t>>& All() const { return m_tiles; }

private:
    std::map<TilePlace, std::vector<std::uint8_t>> m_tiles;
};

} // namespace velmor
