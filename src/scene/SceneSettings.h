#pragma once

#include "platform/Status.h"
#include "xsheet/XSheetFile.h"

#include <array>
#include <string>

namespace velmor {

/// A frame-size preset of the scene dialog.
struct CFramePreset {
    const char* name;
    int width;
    int height;
    int frameRate;
};

inline constexpr std::array<CFramePreset, 7> framePresets = {{{"NTSC", 648, 486, 30},
                                                              {"PAL", 768, 576, 25},
                                                              {"D1 NTSC", 720, 486, 30},
                                                              {"D1 PAL", 720, 576, 25},
                                                              {"HDTV 1", 1280, 720, 30},
                                                              {"HDTV 2", 1920, 1080, 30},
                                                              {"Motion Picture", 2048, 1536, 24}}};
inline constexpr int palPreset = 1;
inline constexpr int customPreset = 7; ///< "Custom": the user's own values
inline constexpr std::array<int, 5> offeredFrameRates = {15, 24, 25, 30, 60};

/// What the scene dialog edits.
struct CSceneSettings {
    std::string name;
    int length = 100; ///< frames, 1 to 2000
    CSceneGeometry geometry;
    int preset = palPreset;

    bool operator==(const CSceneSettings&) const = default;
};

/// The settings as the dialog takes them over: a preset other than "Custom" sets size and rate.
CSceneSettings WithPreset(CSceneSettings settings, int preset);
/// Holds the numbers against their ranges (length 1 to 2000, width and height 10 to 2048, rate 1 to 100).
CStatus CheckSceneSettings(const CSceneSettings& settings);

} // namespace velmor
