#pragma once

#include "platform/camera/CaptureDriver.h"

#include <cstdint>
#include <span>

namespace velmor {

/// Which pixels of a frame become a cel's lines, by CLineThreshold as in every import. Each pixel of `pixels`,
/// which has the frame's size, becomes `line` or `paper`.
void MarkLines(const CCaptureFrame& frame, int threshold, std::span<std::uint32_t> pixels, std::uint32_t line,
               std::uint32_t paper);

} // namespace velmor
