#pragma once

#include "image/CelImg.h"
#include "platform/Status.h"

#include <cstdint>
#include <span>

namespace velmor {

/// A destination of packed rows, 3 bytes a pixel (blue, green, red), no row padding, row 0 at the bottom. A view:
/// whoever made it owns the pixels.
struct CFrameView {
    std::span<std::uint8_t> pixels; ///< width x height x 3 bytes
    int width = 0;
    int height = 0;
};

/// How an image is drawn into a frame.
struct CPlacement {
    double centreX = 0; ///< destination pixels, where the image's centre (half sizes, rounded down) comes to lie
    double centreY = 0;
    double angle = 0; ///< radians
    double scaleX = 1;
    double scaleY = 1;
    double transparency = 0; ///< percent, 0 to 100
    double blurX = 1;        ///< floors above 1 blur with that radius
    double blurY = 1;
    bool antialias = false;

    bool operator==(const CPlacement&) const = default;
};

/// Draws the image over what stands in `destination`, which is otherwise unchanged. The image itself is not
/// changed: smoothing and blurring are done on a copy.
CStatus Render(const CCelImg& image, const CPlacement& placement, CFrameView destination);

} // namespace velmor
