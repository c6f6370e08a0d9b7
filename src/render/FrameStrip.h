#pragma once

#include "image/render/PixelRow.h"
#include "image/render/PlacedImage.h"
#include "image/render/StripCover.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace velmor {

/// Neighbouring rows of a frame while layers are drawn into them: as few as find each other's source pixels in the
/// processor's caches. What upper layers hide is not drawn. Used for one strip after the other, by one thread.
class CFrameStrip {
public:
    static constexpr int mostRows = 16;

    explicit CFrameStrip(int width);

    /// Takes the memory that Draw() needs for so many layers; may throw std::bad_alloc.
    void Reserve(std::size_t layers);
    /// Takes the place of rows firstRow on, at most mostRows; their pixels have no meaning yet.
    void Begin(int firstRow, int rowCount);
    void FillBackground(int columns, std::uint32_t color);
    /// `bytes`: all rows of the strip, 3 bytes a pixel.
    void Unpack(std::span<const std::uint8_t> bytes);
    void Pack(std::span<std::uint8_t> bytes) const;
    /// Draws the layers, bottom first; not more than were reserved for.
    void Draw(std::span<const CPlacedImage> layers);

private:
    /// What is hidden is found out for so many rows at once: fewer find more, and take longer.
    static constexpr int bandRows = 8;
    static constexpr int mostBands = mostRows / bandRows;
    using OpenSpans = std::vector<CColumnSpan>;

    int BandCount() const { return (m_rowCount + bandRows - 1) / bandRows; }
    void FindOpenSpans(std::span<const CPlacedImage> layers);

    int m_firstRow = 0;
    int m_rowCount = 0;
    std::vector<CPixelRow> m_rows;
    CStripCover m_cover;
    std::array<std::vector<OpenSpans>, mostBands> m_open; ///< of each layer
};

} // namespace velmor
