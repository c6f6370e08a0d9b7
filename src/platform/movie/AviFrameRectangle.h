#pragma once

#include "platform/files/Files.h"

#include <optional>

namespace velmor {

struct CFrameRectangle {
    int width = 0;
    int height = 0;
};

/// The frame rectangle ("rcFrame") of the first video stream of an AVI file (RIFF, "hdrl", "strl", "strh";
/// Microsoft, AVI RIFF File Reference), which a general reader does not tell. Nothing when there is none.
std::optional<CFrameRectangle> FrameRectangleOf(const Path& path);

} // namespace velmor
