#include "views/camera/CameraMarks.h"

#include "scene/CellOperations.h"
#include "scene/SceneModel.h"

namespace velmor {

namespace {

// The choices of "Motion Path Setup".
constexpr int pathsOfAllLevels = 0;
constexpr int pathsOfSelectedLevels = 1;

std::vector<int> LevelsWithPath(const CSceneModel& model) {
    std::vector<int> levels;
    for (int level = 0; level < model.Scene().xsheet.LevelCount(); ++level)
        if (model.motionPathSetup == pathsOfAllLevels ||
            (model.motionPathSetup == pathsOfSelectedLevels && model.moveSelection.IsLevelSelected(level)))
            levels.push_back(level);
    return levels;
}

CLevelPath PathOf(const CSceneModel& model, const CCellOperations& cells, int level, CFrameRange frames) {
    const CXSheet& xsheet = model.Scene().xsheet;
    std::vector<std::optional<CPathStop>> stops;
    stops.reserve(static_cast<std::size_t>(frames.end - frames.first));
    for (int frame = frames.first; frame < frames.end; ++frame) {
        std::optional<CPathStop>& stop = stops.emplace_back();
        if (const std::optional<CPoint> centre = cells.GetXSheetCellCentre(level, frame))
            stop = {*centre, frame > 0 && !xsheet.Cell(level, frame).ShowsSameAs(xsheet.Cell(level, frame - 1))};
    }
    return {level, TraceMotionPath(frames.first, stops), cells.GetXSheetCellCentre(level, model.cursorFrame)};
}

} // namespace

CCameraMarks CollectCameraMarks(const CSceneModel& model, const CCellOperations& cells) {
    CCameraMarks marks;
    if (!model.sceneOpen)
        return marks;
    marks.frame = model.Scene().geometry.Frame();
    marks.cameraSelected = model.moveSelection.IsCameraSelected();
    const std::vector<int> levels = LevelsWithPath(model);
    const CFrameRange frames =
        FramesOfPaths(static_cast<int>(levels.size()), model.Scene().xsheet.FrameCount(), model.cursorFrame);
    for (const int level : levels)
        marks.paths.push_back(PathOf(model, cells, level, frames));
    for (int level = 0; level < model.Scene().xsheet.LevelCount(); ++level) {
        const auto centre = cells.GetXSheetCellCentre(level, model.cursorFrame);
        if (centre && model.moveSelection.IsLevelSelected(level))
            marks.outlines.push_back({*cells.GetXSheetCelPoints(level), *centre});
    }
    return marks;
}

} // namespace velmor
