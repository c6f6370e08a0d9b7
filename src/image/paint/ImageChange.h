#pragma once

#include "image/ChangeDirection.h"
#include "image/paint/KeptTiles.h"

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace velmor {

class CArchiveReader;
class CArchiveWriter;

/// What painting has made of an image, and the way back: the tiles that changed, each as the difference between its
/// bytes before and after, which leads both ways. It is kept packed, so that it costs about what was painted.
class CImageChange {
public:
    CImageChange() = default;
    /// From what was kept of an image before it was painted on to the image as it is now. May throw std::bad_alloc.
    CImageChange(const CKeptTiles& before, const CCelImg& after);

    bool IsEmpty() const { return m_tiles.empty(); }
    /// Whether an image is the one that the change starts from, as far as it changes it, and the change whole.
    bool Fits(const CCelImg& image, ChangeDirection direction) const;
    /// Makes the one image of the other and marks it as modified; the rectangle that changed. Nothing, and nothing
    /// done, when it does not fit.
    std::optional<CRect> Apply(CCelImg& image, ChangeDirection direction) const;
    /// Around the tiles that changed.
    CRect Bounds() const;
    /// Adds what was done to the same image afterwards: both become one change. May throw std::bad_alloc.
    void Add(const CImageChange& next);

    void Write(CArchiveWriter& writer) const;
    /// Nothing when the bytes are not those of a change.
    static std::optional<CImageChange> Read(CArchiveReader& reader);

private:
    struct CTile {
        std::uint64_t hashBefore = 0;
        std::uint64_t hashAfter = 0;
        std::vector<std::uint8_t> packed; ///< the difference
    };

    bool Describes(const CCelImg& image) const;

    int m_width = 0;
    int m_height = 0;
    bool m_hasLines = false; ///< a cel's
    std::map<TilePlace, CTile> m_tiles;
};

} // namespace velmor
