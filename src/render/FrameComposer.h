#pragma once

#include "image/Geometry.h"
#include "platform/Status.h"
#include "render/FrameLayers.h"
#include "render/HeldLayers.h"
#include "render/ImageCache.h"
#include "xsheet/CameraTrack.h"
#include "xsheet/XSheetCell.h"

namespace velmor {

/// How a scene's frame is mapped to an output of another size. The camera view's frame is {W, H, W, H, 1}.
struct COutputGeometry {
    CSize scene;
    CSize output;
    double factor = 1; ///< output width / scene width
};

/// Placement of a cell seen through the camera: pan, rotation and zoom of `camera`, the centre relative to the
/// output's centre (integer half sizes), everything enlarged by the geometry's factor.
CPlacement PlaceCell(const CXSheetCell& cell, const CCameraFrame& camera, const COutputGeometry& geometry,
                     bool antialias);

/// Composes a frame, layers divided among the processors by rows when `parallel`. On failure the status is the
/// loader's text + " :: Reading file ->" + path or the renderer's + " :: Rendering image ->" + path; `frame` then
/// holds the layers drawn before. Without memory for the frame it is empty.
CStatus ComposeFrame(const CFrameRequest& request, CImageCache& cache, CFrameBuffer& frame, bool parallel);

/// Composes frame after frame, which often differ in their upper levels alone: what lies below is not composed
/// again. Used by one thread at a time. `cache` outlives it.
class CFrameComposer {
public:
    explicit CFrameComposer(CImageCache& cache) : m_cache(&cache) {}

    /// As ComposeFrame().
    CStatus Compose(const CFrameRequest& request, CFrameBuffer& frame, bool parallel);

private:
    CImageCache* m_cache;
    CHeldLayers m_held;
};

} // namespace velmor
