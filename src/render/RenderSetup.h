#pragma once

#include "image/Geometry.h"
#include "platform/Status.h"
#include "render/FinalRender.h"

#include <string>
#include <vector>

namespace velmor {

/// What the dialog "Render Setup" edits.
struct CRenderSetup {
    std::vector<int> levels; ///< 0-based, in list order
    int firstFrame = 1;      ///< from 1, inclusive
    int lastFrame = 1;
    int step = 1;
    int scaling = 100; ///< percent, 1 to 400
    bool antialias = true;
    RenderFormat format = RenderFormat::Png;
    bool transparentBackground = false;
    std::string compressor; ///< of an AVI; empty for the default
    int quality = 100;      ///< of a movie, percent
    std::string directory;
    std::string name;    ///< of the files, without number and extension
    bool resume = false; ///< keep numbered frames that are there
};

/// Refuses what cannot be rendered, whatever the disk holds, with the text to show.
CStatus CheckRenderSetup(const CRenderSetup& setup, int frameCount, CSize scene);
/// Refuses a scaling out of range and one that makes frames larger than the format can have.
CStatus CheckRenderSize(RenderFormat format, int scaling, CSize scene);

/// The settings of a setup that CheckRenderSetup() accepts.
CRenderSettings RenderSettingsOf(const CRenderSetup& setup);

/// Makes the directory that a render writes to, where it is missing.
CStatus MakeRenderDirectory(const CRenderSettings& settings);

} // namespace velmor
