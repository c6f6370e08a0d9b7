#pragma once

#include "image/CelImg.h"
#include "image/Geometry.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

namespace velmor {

/// Pieces of an image as they were before they were painted on, in tiles of 64 by 64 pixels, so that a stroke costs
/// what it touches. All calls are for one image, whose size stays the same.
class CKeptTiles {
public:
    static constexpr int side = 64;

    /// Keeps every tile that the rectangle touches as it is now, unless it is kept already; what lies outside the
    /// image is left out. May throw std::bad_alloc; what is kept by then stays kept.
    void Keep(const CCelImg& image, const CRect& rect);
    /// Lets go of the tiles that the rectangle does not touch.
    void KeepOnly(const CRect& rect);
    /// Puts what is kept back; the rectangle around it.
    CRect Restore(CCelImg& image) const;
    void Clear() { m_tiles.clear(); }

    std::size_t Count() const { return m_tiles.size(); }

private:
    /// Column and row of a tile.
    using Place = std::pair<int, int>;

    static CRect RectOf(const Place& place, const CCelImg& image);

    std::map<Place, std::vector<std::uint8_t>> m_tiles; ///< line mask, if there is one, and four planes, row by row
};

} // namespace velmor
