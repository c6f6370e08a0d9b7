#include "views/camera/MotionPath.h"

#include <algorithm>
#include <cmath>

namespace velmor {

namespace {

// Positions are whole pixels, so an even motion is uneven by up to a pixel and a half.
constexpr double smallestBend = 3;
constexpr double bendOverNeighbours = 2;
constexpr int mostPoints = 2500;

// How much the motion changes at each point of a run; 0 at its ends.
std::vector<double> BendsOf(std::span<const CPathStop> stops) {
    std::vector<double> bends(stops.size());
    for (std::size_t i = 1; i + 1 < stops.size(); ++i) {
        const CPoint& before = stops[i - 1].at;
        const CPoint& here = stops[i].at;
        const CPoint& after = stops[i + 1].at;
        bends[i] = std::hypot(after.x - 2.0 * here.x + before.x, after.y - 2.0 * here.y + before.y);
    }
    return bends;
}

// Along a curve, or while something speeds up, every frame bends about as much as its neighbours; a key stands out.
bool StandsOut(const std::vector<double>& bends, std::size_t i) {
    return bends[i] >= smallestBend && bends[i] > bendOverNeighbours * std::max(bends[i - 1], bends[i + 1]);
}

CPathRun TraceRun(int firstFrame, std::span<const CPathStop> stops) {
    const std::vector<double> bends = BendsOf(stops);
    CPathRun run{firstFrame, {}};
    run.points.reserve(stops.size());
    for (std::size_t i = 0; i < stops.size(); ++i) {
        const bool isEnd = i == 0 || i + 1 == stops.size();
        const PathMark plain = stops[i].newDrawing ? PathMark::Drawing : PathMark::Tick;
        run.points.push_back({stops[i].at, isEnd || StandsOut(bends, i) ? PathMark::Key : plain});
    }
    return run;
}

} // namespace

CMotionPath TraceMotionPath(int firstFrame, std::span<const std::optional<CPathStop>> stops) {
    CMotionPath path;
    std::vector<CPathStop> run;
    for (std::size_t i = 0; i <= stops.size(); ++i) {
        if (i < stops.size() && stops[i]) {
            run.push_back(*stops[i]);
        } else if (!run.empty()) {
            path.push_back(TraceRun(firstFrame + static_cast<int>(i - run.size()), run));
            run.clear();
        }
    }
    return path;
}

CFrameRange FramesOfPaths(int pathCount, int frameCount, int currentFrame) {
    const int shown = std::min(frameCount, mostPoints / std::max(pathCount, 1));
    const int first = std::clamp(currentFrame - shown / 2, 0, frameCount - shown);
    return {first, first + shown};
}

} // namespace velmor
