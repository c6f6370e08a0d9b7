#pragma once

#include "app/demo/FoxPose.h"
#include "image/CelImg.h"
#include "image/Palette.h"

namespace velmor::demo {

/// The fox's cels, and where on them the ground below the resting hips is.
inline constexpr CSize foxCel{720, 680};
inline constexpr CSpot foxGround{380, 60};
/// The top of the head of the standing fox, from the ground.
inline constexpr CSpot foxCrown{14, 434};

/// Draws the fox on a cel of that size.
void DrawFox(CCelImg& cel, const CPalette& palette, const CFoxPose& pose);

} // namespace velmor::demo
