#pragma once

#include "image/Color.h"
#include "platform/files/Profile.h"
#include "scene/paper/Neighbours.h"

namespace velmor {

/// Which drawings shine through the one under edit, and how.
struct COnionSettings {
    static constexpr int mostSkins = 5;

    bool shown = false;
    bool inCamera = false; ///< in the camera view as well
    DrawingOrder order = DrawingOrder::Sheet;
    int before = 2; ///< 0 to mostSkins
    int after = 2;
    ColorRef tintBefore = MakeColorRef(226, 88, 34); ///< warm
    ColorRef tintAfter = MakeColorRef(30, 110, 220); ///< cool
    int strength = 70;                               ///< of the nearest skin, 1 to 100 percent
    int kept = 60;                                   ///< of it by each further one, 1 to 100 percent
    bool withPaint = false;
    bool over = false;                              ///< in front of the drawing under edit
    ColorRef tintTable = MakeColorRef(26, 138, 72); ///< of pinned drawings
    int strengthTable = 70;

    /// The strength of the skin that is `step` (0 for the nearest) away, in percent.
    int StrengthOf(int step) const;

    bool operator==(const COnionSettings&) const = default;
};

/// Values out of range are brought into it.
COnionSettings ReadOnionSettings(const CProfile& profile);
void WriteOnionSettings(CProfile& profile, const COnionSettings& settings);

} // namespace velmor
