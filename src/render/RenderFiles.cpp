#include "render/FinalRender.h"
#include "render/FrameReader.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <exception>

namespace velmor {

COutputGeometry RenderGeometryOf(const CRenderSettings& settings, CSize scene) {
    int width = std::max(1, static_cast<int>(scene.width * settings.scaling * 0.01));
    if (settings.format == RenderFormat::Avi || settings.asOfAvi)
        width = (width + 3) / 4 * 4;
    const double factor = static_cast<double>(width) / scene.width;
    return {scene, {width, std::max(1, static_cast<int>(scene.height * factor))}, factor};
}

int MostPixelsOf(RenderFormat format) {
    switch (format) {
    case RenderFormat::Mp4:
        return 16384; // of H.264 encoders
    case RenderFormat::Avi:
        return 32764; // 16-bit numbers in its header, and a multiple of 4
    default:
        return 32767; // of the programs that read the pictures, ours among them
    }
}

std::string_view ExtensionOf(RenderFormat format) {
    constexpr std::array<std::string_view, 5> extensions = {".png", ".tga", ".bmp", ".avi", ".mp4"};
    return extensions[static_cast<std::size_t>(format)];
}

Path RenderTargetOf(const Path& name, RenderFormat format) {
    if (!IsMovie(format))
        return name;
    std::string extension = name.extension().string();
    std::ranges::transform(extension, extension.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension == ExtensionOf(format) ? name : Path(name) += ExtensionOf(format);
}

Path RenderFrameFile(const Path& target, RenderFormat format, int frame) {
    constexpr std::size_t digits = 4;
    std::string number = std::to_string(frame + 1);
    number.insert(0, digits - std::min(digits, number.size()), '0');
    return target.parent_path() / (target.filename().string() + number + std::string(ExtensionOf(format)));
}

Path RenderFrameFile(const CRenderSettings& settings, int frame) {
    return RenderFrameFile(settings.target, settings.format, frame);
}

bool IsFrameKept(const CRenderSettings& settings, CSize scene, int frame) {
    const Path file = RenderFrameFile(settings, frame);
    if (!settings.onlyWhole)
        return FileExists(file);
    try {
        CFrameBuffer read;
        return static_cast<bool>(ReadFrameFile(file, static_cast<FrameFormat>(settings.format),
                                               RenderGeometryOf(settings, scene).output,
                                               settings.transparentBackground && HasAlpha(settings.format), read));
    } catch (const std::exception&) {
        return false; // without memory to look at it, nothing is known of it
    }
}

} // namespace velmor
