#include "acquire/CaptureLines.h"

#include <algorithm>

namespace velmor {

void MarkLines(const CCaptureFrame& frame, int threshold, std::span<std::uint32_t> pixels, std::uint32_t line,
               std::uint32_t paper) {
    const int leastPaper = threshold * 3; // of the sum, whose third is rounded down
    const std::uint8_t* source = frame.bytes.data();
    const std::size_t count = std::min(pixels.size(), frame.bytes.size() / 4);
    for (std::size_t pixel = 0; pixel < count; ++pixel, source += 4)
        pixels[pixel] = source[0] + source[1] + source[2] < leastPaper ? line : paper;
}

} // namespace velmor
