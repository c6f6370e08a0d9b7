#pragma once

#include "image/CelImg.h"
#include "image/render/ImagePacker.h"
#include "image/render/OpaqueMap.h"
#include "image/render/Render.h"
#include "image/render/StripedPixels.h"
#include "image/render/UniformMap.h"

#include <cstddef>
#include <cstdint>

namespace velmor {

/// What of a placement changes the pixels before they are sampled.
struct CRenderPreparation {
    int blurX = 0; ///< radii; 0, 0 for none
    int blurY = 0;
    bool smooth = false;

    bool operator==(const CRenderPreparation&) const = default;
};

/// The preparation that a placement asks of an image: only a cel is smoothed, and only when antialiased.
CRenderPreparation PreparationFor(const CPlacement& placement, LoadState kind);

/// An image made ready to be drawn any number of times, from several threads at once: blurred and smoothed as
/// asked, its pixels packed for sampling. Never changes after it is made.
class CRenderSource {
public:
    /// `image` must hold a cel or a picture. May throw std::bad_alloc.
    CRenderSource(const CCelImg& image, const CRenderPreparation& preparation);
    /// Prepares the image in place instead of a copy, and takes it: its memory is given back at the end.
    CRenderSource(CCelImg&& image, const CRenderPreparation& preparation);
    /// Takes what was packed.
    explicit CRenderSource(CImagePacker&& packed);

    int Width() const { return m_width; }
    int Height() const { return m_height; }
    LoadState Kind() const { return m_kind; }
    /// Memory taken, for caches that are bounded in bytes.
    std::size_t ByteCount() const;

    /// Draws rows firstRow to endRow - 1 of the destination. Blur and smoothing of `placement` are taken as already
    /// done; its antialias flag chooses the sampling.
    void DrawRows(const CPlacement& placement, CFrameView destination, int firstRow, int endRow) const;

    const CStripedPixels& Pixels() const { return m_pixels; }
    /// The points that show anything, between pixels too: those outside are all transparent, and most of the image
    /// when a cel holds a single figure. Their pixels are not kept.
    const CRect& PaintedArea() const { return m_paintedArea; }
    const CUniformMap& UniformAreas() const { return m_uniformAreas; }
    const COpaqueMap& OpaqueAreas() const { return m_opaqueAreas; }
    /// Whether every alpha is 255.
    bool IsOpaque() const { return m_isOpaque; }

private:
    int m_width = 0;
    int m_height = 0;
    LoadState m_kind = LoadState::Nothing;
    bool m_isOpaque = false;
    CRect m_paintedArea;
    CStripedPixels m_pixels;
    CUniformMap m_uniformAreas;
    COpaqueMap m_opaqueAreas;
};

} // namespace velmor
