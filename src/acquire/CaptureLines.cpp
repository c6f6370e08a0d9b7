#include "acquire/CaptureLines.h"

#include "image/import/LineThreshold.h"

#include <algorithm>

namespace velmor {

void MarkLines(const CCaptureFrame& frame, int threshold, std::span<std::uint32_t> pixels, std::uint32_t line,
               std::uint32_t paper) {
    const CLineThreshold lines(threshold);
    const std::uint8_t* source = frame.bytes.data();
    const std::size_t count = std::min(pixels.size(), frame.bytes.size() / 4);
    for (std::size_t pixel = 0; pixel < count; ++pixel, source += 4)
        pixels[pixel] = lines.IsLine(source[2], source[1], source[0]) ? line : paper;
}

} // namespace velmor
