#include "scene/NewCelSize.h"

#include <algorithm>
#include <string>

namespace velmor {

namespace {

/// Of a pixel: four planes, the line mask, and what the cel editor makes of them to show.
constexpr std::uint64_t bytesOfPixel = 9;

} // namespace

CStatus CheckNewCelSize(const CSize& size, std::uint64_t freeBytes) {
    if (size.width > largestCelSide || size.height > largestCelSide)
        return CStatus::Failure("A cel can be at most " + std::to_string(largestCelSide) + " pixels wide and high");
    const auto pixels =
        static_cast<std::uint64_t>(std::max(size.width, 0)) * static_cast<std::uint64_t>(std::max(size.height, 0));
    if (pixels * bytesOfPixel > freeBytes)
        return CStatus::Failure("There is not enough memory for a cel of this size");
    return {};
}

} // namespace velmor
