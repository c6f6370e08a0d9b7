#pragma once

#include "image/CelImg.h"
#include "image/paint/PaintBounds.h"

#include <cstdint>

namespace velmor {

// What the tips of tools do to columns x to endX - 1 of a row, which must lie inside the image. Every pixel that
// they change is added to the bounds.

enum class BrushAction { DrawLine, Erase };

/// Makes black lines of them. For cels.
void InkSpan(CCelImg& cel, int y, int x, int endX, CPaintBounds& bounds);
/// Recolours or erases the line pixels among them. For cels.
void TreatLines(CCelImg& cel, int y, int x, int endX, BrushAction action, CColor color, CPaintBounds& bounds);
/// An alpha under a soft brush of some weight, 0 to 255.
std::uint8_t SoftAlpha(int alpha, int weight, BrushAction action);

} // namespace velmor
