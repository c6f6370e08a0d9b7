#pragma once

#include "image/render/PixelRow.h"
#include "image/render/RenderSource.h"
#include "image/render/RowKernels.h"
#include "image/render/SourceMapping.h"

#include <optional>

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
    /// Draws over what stands in `pixels`, row `row` of the frame; nothing outside the spans is changed.
    void Draw(int row, const CRowSpans& spans, CPixelRow& pixels) const;

private:
    void MakeAlphaTable(double transparency);
    void MakeColumnTable(int columnCount);
    void MakeLaneSteps();

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
