#pragma once

#include "image/CelImg.h"
#include "platform/Status.h"

namespace velmor {

// How heavy the lines of a cel are. Both set the modified flag if anything changes, fail for anything but a cel,
// and leave it unchanged when they fail.

/// The most that lines grow or shrink at once.
constexpr int mostLineWeightChange = 8;

/// Every pixel at most `pixels` (1 to mostLineWeightChange) away from a line, between the middles of pixels,
/// becomes a line pixel of the colour of the nearest one: lines grow by so much on either side, as under a round
/// brush.
CStatus ThickenLines(CCelImg& cel, int pixels);

/// Takes `pixels` layers (1 to mostLineWeightChange) off either side of the lines, down to lines one pixel wide,
/// which stay: no line breaks, none goes, no gap closes, and a line that leaves the image still does. What is
/// uncovered takes the colour of the nearest pixel that was no line, so that painted areas grow up to the lines.
CStatus ThinLines(CCelImg& cel, int pixels);

} // namespace velmor
