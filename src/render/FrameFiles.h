#pragma once

#include "platform/files/PngFile.h"
#include "render/FrameLayers.h"

#include <cstdint>
#include <vector>

namespace velmor {

enum class FrameFormat { Png = 0, Targa = 1, Bitmap = 2 };

/// Alpha of a frame, one byte a pixel, bottom row first.
using AlphaPlane = std::vector<std::uint8_t>;

/// Writes a frame atomically: top row first in a PNG, 24 bits a pixel, or 32 where `alpha` is not empty (a bitmap
/// has none). False when it cannot be written.
[[nodiscard]] bool WriteFrameFile(const Path& path, FrameFormat format, const CFrameBuffer& frame,
                                  const AlphaPlane& alpha, PngCompression compression = PngCompression::Normal);

/// Turns a frame composed over black into the same frame without its background, with the help of the frame
/// composed over white: the difference of the two is what shows through. `frame` becomes the colours alone, not
/// multiplied by alpha.
AlphaPlane SeparateBackground(CFrameBuffer& frame, const CFrameBuffer& overWhite);

} // namespace velmor
