#include "scene/CommandState.h"

#include <algorithm>

namespace velmor {

bool HasSelectedAssets(const CSceneModel& model) {
    return model.sceneOpen && !model.sourceSelection.empty();
}

bool CanChangeAssets(const CSceneModel& model) {
    return CanChangeImages(model) || (HasSelectedAssets(model) && model.sourceMode == SourceMode::Sounds);
}

bool CanChangeImages(const CSceneModel& model) {
    return HasSelectedAssets(model) && (model.sourceMode == SourceMode::Pictures ||
                                        (model.sourceMode == SourceMode::Cels && !model.folderName.empty()));
}

bool CanColorKey(const CSceneModel& model) {
    return HasSelectedAssets(model) && model.sourceMode == SourceMode::Pictures;
}

bool CanDeleteLevel(const CSceneModel& model) {
    return model.sceneOpen && model.xsheet.LevelCount() > 1;
}

bool CanSwapLevels(const CSceneModel& model) {
    return model.sceneOpen && model.xsheet.LevelCount() >= 2;
}

bool CanEditRange(const CSceneModel& model) {
    return model.sceneOpen && model.selection.lastFrame > model.selection.firstFrame;
}

bool CanPaste(const CSceneModel& model) {
    return model.sceneOpen && !model.clipboard.IsEmpty();
}

bool CanUndo(const CSceneModel& model) {
    return model.sceneOpen && model.undo.has_value();
}

bool IsUndoInPicture(const CSceneModel& model) {
    const int frame = model.cursorFrame;
    if (!CanUndo(model) || !model.undo->xsheet.HasFrame(frame) ||
        model.undo->xsheet.LevelCount() != model.xsheet.LevelCount() || model.undo->geometry != model.geometry ||
        !std::ranges::equal(model.undo->sounds.All(), model.sounds.All()))
        return false;
    CXSheet xsheet = model.xsheet;
    for (int level = 0; level < xsheet.LevelCount(); ++level)
        xsheet.MutableCell(level, frame) = model.undo->xsheet.Cell(level, frame);
    CCameraTrack camera = model.camera;
    camera.MutableAt(frame) = model.undo->camera.At(frame);
    return xsheet == model.undo->xsheet && camera == model.undo->camera;
}

bool CanEditCellData(const CSceneModel& model) {
    return model.sceneOpen && model.xsheet.HasLevel(model.cursorLevel) &&
           model.xsheet.HasFrame(model.cursorFrame) &&
           model.xsheet.Cell(model.cursorLevel, model.cursorFrame).IsUsed();
}

bool CanInbetween(const CSceneModel& model) {
    const CXSheetSelection& selection = model.selection;
    return model.sceneOpen && model.xsheet.HasFrame(selection.firstFrame) &&
           model.xsheet.HasFrame(selection.lastFrame) && selection.lastFrame - selection.firstFrame >= 2;
}

bool CanPlaySelectedSound(const CSceneModel& model) {
    return HasSelectedAssets(model) && model.sourceMode == SourceMode::Sounds;
}

bool HasEditedImage(const CSceneModel& model) {
    return model.celImg.GetLoadState() != LoadState::Nothing;
}

bool HasEditedPicture(const CSceneModel& model) {
    return model.celImg.GetLoadState() == LoadState::Picture;
}

} // namespace velmor
