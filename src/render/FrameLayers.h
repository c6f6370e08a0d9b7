#pragma once

#include "image/Color.h"
#include "image/render/Render.h"
#include "platform/files/Files.h"

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

} // namespace velmor
