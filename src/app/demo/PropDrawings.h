#pragma once

#include "image/CelImg.h"
#include "image/Palette.h"

#include <vector>

namespace velmor::demo {

// Everything that is drawn besides the fox. Each function draws on a cel of the size beside it.

inline constexpr CSize butterflyCel{240, 220};
inline constexpr CSize shadowCel{400, 96};
inline constexpr CSize plantCel{1500, 300};
inline constexpr CSize cloudCel{520, 240};
inline constexpr CSize titleCel{800, 310};

/// How wide the butterfly's wings are spread in each of its drawings, 0 to 1: one beat.
std::vector<double> WingBeat();
void DrawButterfly(CCelImg& cel, const CPalette& palette, double spread);
/// The soft patch below the fox.
void DrawShadow(CCelImg& cel, const CPalette& palette);
/// Grass and flowers close to the camera.
void DrawPlants(CCelImg& cel, const CPalette& palette);
void DrawCloud(CCelImg& cel, const CPalette& palette);
/// The word "Demo", lettered with a fat brush.
void DrawTitle(CCelImg& cel, const CPalette& palette);

} // namespace velmor::demo
