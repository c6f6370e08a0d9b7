#include "scene/SceneSettings.h"

namespace velmor {

namespace {

CStatus CheckRange(const char* what, int value, int least, int most) {
    if (value >= least && value <= most)
        return {};
    return CStatus::Failure(std::string("The ") + what + " must be a whole number from " + std::to_string(least) +
                            " to " + std::to_string(most));
}

} // namespace

CSceneSettings WithPreset(CSceneSettings settings, int preset) {
    settings.preset = preset;
    if (preset >= 0 && preset < customPreset) {
        const CFramePreset& chosen = framePresets[static_cast<std::size_t>(preset)];
        settings.geometry.width = chosen.width;
        settings.geometry.height = chosen.height;
        settings.geometry.frameRate = chosen.frameRate;
    }
    return settings;
}

CStatus CheckSceneSettings(const CSceneSettings& settings) {
    for (const CStatus& status : {CheckRange("length", settings.length, 1, CXSheet::mostFramesInFile),
                                  CheckRange("width", settings.geometry.width, 10, 2048),
                                  CheckRange("height", settings.geometry.height, 10, 2048),
                                  CheckRange("frame rate", settings.geometry.frameRate, 1, 100)})
        if (!status)
            return status;
    return {};
}

} // namespace velmor
