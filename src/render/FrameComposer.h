#pragma once

#include "image/Color.h"
#include "image/Geometry.h"
#include "image/render/Render.h"
#include "platform/Status.h"
#include "platform/files/Files.h"
#include "render/ImageCache.h"
#include "xsheet/CameraTrack.h"
#include "xsheet/XSheetCell.h"

#include <cstdint>
#include <vector>

namespace velmor {

/// Width of a frame buffer: w - w mod 4 + 4, so that every row is a multiple of 4 bytes.
constexpr int PaddedWidthOf(int width) {
    return width - width % 4 + 4;
}

/// A composed frame: rows of width x 3 bytes (blue, green, red), bottom row first.
struct CFrameBuffer {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;

    CFrameView View() { return {pixels, width, height}; }
};

/// One image of a frame.
struct CFrameLayer {
    Path path;
    CPlacement placement;

    bool operator==(const CFrameLayer& other) const {
        return path.native() == other.path.native() && placement == other.placement;
    }
};

/// Everything that one frame needs: a value, independent of the document, so that a worker can compose it while the
/// document goes on.
struct CFrameRequest {
    int bufferWidth = 0;     ///< pixels in a row of the buffer
    int backgroundWidth = 0; ///< columns filled with the background; those beyond are 0
    int height = 0;
    ColorRef background = 0;
    std::vector<CFrameLayer> layers; ///< bottom first

    bool operator==(const CFrameRequest&) const = default;
};

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

} // namespace velmor
