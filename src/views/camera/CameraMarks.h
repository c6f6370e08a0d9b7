#pragma once

#include "image/Geometry.h"
#include "views/camera/MotionPath.h"

#include <array>
#include <optional>
#include <vector>

namespace velmor {

class CCellOperations;
struct CSceneModel;

/// The motion path of a level.
struct CLevelPath {
    int level = 0;
    CMotionPath path;
    std::optional<CPoint> current; ///< the point of the current frame
};

/// Outline of a cel that the mouse would move.
struct CCelOutline {
    std::array<CPoint, 4> corners;
    CPoint centre;
};

/// What is drawn over the camera picture, in frame coordinates, y up.
struct CCameraMarks {
    CSize frame;
    std::vector<CLevelPath> paths;
    std::vector<CCelOutline> outlines;
    bool cameraSelected = false;
    bool hasGrips = false; ///< the ticks of the paths can be dragged
};

/// The marks of the current frame; none when no scene is open.
CCameraMarks CollectCameraMarks(const CSceneModel& model, const CCellOperations& cells);

} // namespace velmor
