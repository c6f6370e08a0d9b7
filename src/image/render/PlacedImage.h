#pragma once

#include "image/render/PixelRow.h"
#include "image/render/RenderSource.h"
#include "image/render/RowKernels.h"
#include "image/render/SourceMapping.h"
#include "image/render/StripCover.h"

#include <optional>
#include <span>

namespace velmor {

/// The columns of a row where an image has something to draw.
struct CRowSpans {
    CColumnSpan all;
    /// Those of them that are interpolated; none without antialiasing.
    CColumnSpan interpolated;
};

/// An image at its place on a frame, with all that is the same for every row computed once. May be used by several
/// threads at once. `source` must outlive it.
class CPlacedImage {
public:
    /// May throw std::bad_alloc.
    CPlacedImage(const CRenderSource& source, const CPlacement& placement, CSize destination);

    CRowSpans SpansOf(int row) const;
    /// Draws over what stands in `pixels`, row `row` of the frame, those columns of its spans that are `open`, from
    /// left to right; some between them may be drawn as well. Nothing outside the spans is changed.
    void Draw(int row, const CRowSpans& spans, std::span<const CColumnSpan> open, CPixelRow& pixels) const;
    /// Adds what the image hides of the strip of rows from firstRow on.
    void Cover(int firstRow, int rowCount, CStripCover& cover) const;

private:
    void MakeAlphaTable(double transparency);
    void MakeColumnTable(int columnCount);
    void MakeLaneSteps();
    CRowWork WorkOf(int row) const;

    const CRenderSource* m_source;
    CSourceMapping m_mapping;
    bool m_antialias;
    CRunSettings m_runs;
    std::ptrdiff_t m_aheadBytes;
    bool m_isInvisible = false;
    std::optional<AlphaTable> m_alphas;
    std::optional<CColumnTable> m_columns;
    CLaneSteps m_laneSteps;
};

} // namespace velmor
