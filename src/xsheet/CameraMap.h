#pragma once

#include "image/Geometry.h"
#include "image/RealPoint.h"
#include "xsheet/CameraTrack.h"

namespace velmor {

/// A vector turned by an angle in radians, counter-clockwise.
CRealPoint Turned(CRealPoint vector, double angle);

/// Where the camera shows what stands on the stage, and the other way round, between pixels: for what is dragged.
/// The stage is what positions of cells are counted in, y upwards. (Outlines are drawn in whole pixels, by the
/// steps of CellCorners, which differ from this by a pixel or two.)
class CCameraMap {
public:
    /// A camera whose values are not numbers, or whose zoom is 0, counts as one that stands still.
    CCameraMap(const CCameraFrame& camera, CSize frame);

    CRealPoint ToView(CRealPoint stage) const;
    CRealPoint ToStage(CRealPoint view) const;

private:
    CCameraFrame m_camera;
    CRealPoint m_centre;
};

} // namespace velmor
