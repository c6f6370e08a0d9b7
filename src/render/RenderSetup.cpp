#include "render/RenderSetup.h"

#include "render/Compressors.h"

namespace velmor {

namespace {

constexpr int leastScaling = 1;
constexpr int mostScaling = 400;
constexpr int percentUnits = 100; // of the quality's 0 to 10000

CStatus CheckName(const std::string& name) {
    if (name.empty())
        return CStatus::Failure("Enter a name for the rendered files!");
    if (name.find_first_of("/\\") != std::string::npos || name == "." || name == "..")
        return CStatus::Failure("The name of the rendered files may not hold a directory!");
    return {};
}

} // namespace

CStatus CheckRenderSize(RenderFormat format, int scaling, CSize scene) {
    if (scaling < leastScaling || scaling > mostScaling)
        return CStatus::Failure("Invalid scaling value!");
    CRenderSettings settings;
    settings.scaling = scaling;
    settings.format = format;
    const CSize output = RenderGeometryOf(settings, scene).output;
    const int most = MostPixelsOf(format);
    if (output.width <= most && output.height <= most)
        return {};
    return CStatus::Failure("Frames of " + std::to_string(output.width) + " x " + std::to_string(output.height) +
                            " pixels are too large for this file format, which has " + std::to_string(most) +
                            " at most!");
}

CStatus CheckRenderSetup(const CRenderSetup& setup, int frameCount, CSize scene) {
    if (setup.levels.empty())
        return CStatus::Failure("You should select at least one level to render!");
    if (setup.firstFrame < 1 || setup.firstFrame > setup.lastFrame || setup.lastFrame > frameCount)
        return CStatus::Failure("Invalid start or end frame!");
    if (setup.step < 1)
        return CStatus::Failure("Invalid step value!");
    if (CStatus size = CheckRenderSize(setup.format, setup.scaling, scene); !size)
        return size;
    if (setup.quality < 0 || setup.quality > 100)
        return CStatus::Failure("Invalid quality value!");
    if (setup.format == RenderFormat::Avi && !setup.compressor.empty() && !FindCompressor(setup.compressor))
        return CStatus::Failure("A suitable compressor cannot be found.");
    if (setup.directory.empty())
        return CStatus::Failure("Choose a directory for the rendered files!");
    return CheckName(setup.name);
}

CRenderSettings RenderSettingsOf(const CRenderSetup& setup) {
    CRenderSettings settings;
    settings.levels = setup.levels;
    for (int frame = setup.firstFrame - 1; frame < setup.lastFrame; frame += setup.step)
        settings.frames.push_back(frame);
    settings.step = setup.step;
    settings.scaling = setup.scaling;
    settings.antialias = setup.antialias;
    settings.format = setup.format;
    settings.transparentBackground = setup.transparentBackground;
    settings.resume = setup.resume;
    settings.quality = setup.quality * percentUnits;
    settings.compressor = setup.compressor;
    settings.target = RenderTargetOf(PathOf(setup.directory) / PathOf(setup.name), setup.format);
    return settings;
}

CStatus MakeRenderDirectory(const CRenderSettings& settings) {
    const Path directory = settings.target.parent_path();
    if (directory.empty() || CreateFolder(directory))
        return {};
    return CStatus::Failure("Could not create the directory " + Utf8Of(directory));
}

} // namespace velmor
