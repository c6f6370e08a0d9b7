#pragma once

#include "image/Geometry.h"

#include <optional>
#include <span>
#include <vector>

namespace velmor {

/// How a frame is marked on a motion path.
enum class PathMark {
    Tick,    ///< a frame like its neighbours
    Drawing, ///< another drawing than in the frame before
    Key      ///< the path begins, ends or changes its speed or direction at once
};

/// Where a level's cell stands in a frame.
struct CPathStop {
    CPoint at; ///< frame coordinates as the camera sees them, y up
    bool newDrawing = false;
};

struct CPathPoint {
    CPoint at;
    PathMark mark = PathMark::Tick;

    bool operator==(const CPathPoint&) const = default;
};

/// The path through a run of used cells, a point for each frame.
struct CPathRun {
    int firstFrame = 0;
    std::vector<CPathPoint> points;
};

/// A level's path: one run for each stretch of frames without an empty cell.
using CMotionPath = std::vector<CPathRun>;

/// Traces `stops`, one for each frame from `firstFrame` on, nothing for an empty cell.
CMotionPath TraceMotionPath(int firstFrame, std::span<const std::optional<CPathStop>> stops);

/// The frames whose paths are shown, first and last + 1: all of them, or as many around the current one as keeps
/// `pathCount` paths within what can be drawn while the mouse moves.
struct CFrameRange {
    int first = 0;
    int end = 0;

    bool operator==(const CFrameRange&) const = default;
};
CFrameRange FramesOfPaths(int pathCount, int frameCount, int currentFrame);

} // namespace velmor
