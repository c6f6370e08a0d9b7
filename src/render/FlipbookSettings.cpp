#include "render/FlipbookSettings.h"

#include <algorithm>

namespace velmor {

CStatus CheckFlipbookSettings(const CFlipbookSettings& settings, int frameCount) {
    if (settings.levels.empty())
        return CStatus::Failure("You should select at least one level to generate a flipbook!");
    const int start = settings.firstFrame;
    const int end = settings.lastFrame;
    if (start <= 0 || end <= 0 || start > end || start > frameCount || end > frameCount)
        return CStatus::Failure("Invalid start or end frame!");
    if (settings.step < 1 || settings.step > std::max(1, (end - start) / 2))
        return CStatus::Failure("Invalid step value!");
    const auto isPercentage = [](int value) { return value >= 10 && value <= 100; };
    if (!isPercentage(settings.scaling) || !isPercentage(settings.quality))
        return CStatus::Failure("The scaling and the quality must be whole numbers from 10 to 100");
    return {};
}

CFlipbookGeometry FlipbookGeometryOf(CSize scene, int scaling) {
    const int scaled = static_cast<int>(scene.width * scaling * 0.01);
    const int width = scaled + (4 - scaled % 4);
    const double factor = static_cast<double>(width) / scene.width;
    return {{width, std::max(1, static_cast<int>(scene.height * factor))}, factor};
}

} // namespace velmor
