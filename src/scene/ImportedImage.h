#pragma once

#include "image/CelImg.h"
#include "platform/Status.h"
#include "platform/files/Files.h"
#include "scene/ScenePaths.h"

namespace velmor {

/// What of a file is a line of the cel that it becomes.
struct CLineRules {
    static constexpr int mostThreshold = 255;
    static constexpr int mostSpecks = 100;

    int threshold = 128; ///< 0 to 255: what is darker is a line
    int specks = 0;      ///< groups of at most so many line pixels are left out

    bool operator==(const CLineRules&) const = default;
};

/// A file from outside as a cel or picture, not modified and with the file's own path.
struct CImportedImage {
    CStatus status; ///< of a file that is none of those that can be read, a failure without text
    CCelImg image;
    int specks = 0; ///< that were left out
};

/// `rules` are for cels.
CImportedImage ReadImportedImage(const Path& file, SourceMode kind, const CLineRules& rules);

} // namespace velmor
