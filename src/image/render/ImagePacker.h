#pragma once

#include "image/CelImg.h"
#include "image/paint/MaskWords.h"
#include "image/render/OpaqueMap.h"
#include "image/render/PixelPacking.h"
#include "image/render/StripedPixels.h"
#include "image/render/UniformMap.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace velmor {

class CLineEdges;

/// The smallest area with every pixel that is not transparent.
class CVisibleArea {
public:
    explicit CVisibleArea(CSize image)
        : m_columns(static_cast<std::size_t>(image.width)), m_firstRow(image.height) {}

    /// The alphas of the image's row y.
    void AddRow(int y, const std::uint8_t* alphas);
    void AddPixel(int x, int y);
    /// Empty (all zero) when nothing is visible.
    CRect Area() const;

private:
    void AddY(int y);

    std::vector<std::uint8_t> m_columns; ///< not 0 where anything is visible
    int m_firstRow;
    int m_endRow = 0;
};

/// Where the rows of an image come from, from the bottom up. What fails to be read is told by false.
class IImageRows {
public:
    virtual ~IImageRows() = default;

    virtual CSize Size() const = 0;
    virtual LoadState Kind() const = 0;
    /// Of the rows as they come. To be called before any row is asked for.
    [[nodiscard]] virtual bool FindVisible(CVisibleArea& area) = 0;
    /// Points `row` to row y, which lies above all that were asked for; it stays until the next call. Only its
    /// columns from firstColumn to endColumn - 1 need have a meaning.
    [[nodiscard]] virtual bool Read(int y, int firstColumn, int endColumn, CChannelRows& row) = 0;
};

/// Makes of an image's rows what a CRenderSource keeps.
///
/// A row goes to its place as soon as it is there and is finished there while it is still in the processor's
/// caches: smoothed when the row above has come, looked at when its tiles are complete. Nothing else as large as
/// the image is needed.
class CImagePacker {
public:
    /// `smoothedLines`: those of a cel that is to be smoothed. False when a row could not be read. May throw
    /// std::bad_alloc.
    [[nodiscard]] bool Pack(IImageRows& rows, const std::optional<CLineMask>& smoothedLines);

    // The result, to be taken.
    CSize size;
    LoadState kind = LoadState::Nothing;
    bool isOpaque = false;
    CRect paintedArea;
    CStripedPixels pixels;
    CUniformMap uniformAreas;
    COpaqueMap opaqueAreas;

private:
    void TakePlace(const CRect& visible);
    void FinishRow(int y, CLineEdges* edges);
    void Smooth(int y, CLineEdges& edges);
    void LookAtTiles(int row);

    std::vector<TileColor> m_tileColors; ///< row after row
};

} // namespace velmor
