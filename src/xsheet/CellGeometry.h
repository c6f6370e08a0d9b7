#pragma once

#include "image/Geometry.h"
#include "xsheet/CameraTrack.h"
#include "xsheet/XSheetCell.h"

#include <array>

namespace velmor {

/// x cos a - y sin a, y cos a + x sin a, truncated.
CPoint RotatePoint(CPoint point, double angle);

/// The corners of a used cell in camera-view pixels, in the integer steps that all outlines are drawn with: lower
/// left, lower right, upper right, upper left of the unrotated cell.
std::array<CPoint, 4> CellCorners(const CXSheetCell& cell, const CCameraFrame& camera, CSize frame);

/// Camera-view position of a cell's centre, as motion paths show it.
CPoint CellCentre(const CXSheetCell& cell, const CCameraFrame& camera, CSize frame);

} // namespace velmor
