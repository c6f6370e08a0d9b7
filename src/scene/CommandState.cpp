#include "scene/CommandState.h"

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

bool CanCleanUp(const CSceneModel& model) {
    return model.sourceMode == SourceMode::Pictures ? model.sceneOpen
                                                    : model.sourceMode == SourceMode::Cels && model.HasFolder();
}

bool CanColorKey(const CSceneModel& model) {
    return HasSelectedAssets(model) && model.sourceMode == SourceMode::Pictures;
}

bool CanDeleteLevel(const CSceneModel& model) {
    return model.sceneOpen && model.Scene().xsheet.LevelCount() > 1;
}

bool CanSwapLevels(const CSceneModel& model) {
    return model.sceneOpen && model.Scene().xsheet.LevelCount() >= 2;
}

bool CanEditRange(const CSceneModel& model) {
    return model.sceneOpen && model.selection.lastFrame > model.selection.firstFrame;
}

std::optional<CXSheetSelection> SelectedCells(const CSceneModel& model) {
    const CXSheetSelection& selection = model.selection;
    const CXSheet& xsheet = model.Scene().xsheet;
    const bool isRange = selection.firstLevel <= selection.lastLevel && selection.firstFrame <= selection.lastFrame;
    if (!model.sceneOpen || !isRange || !xsheet.HasLevel(selection.firstLevel) ||
        !xsheet.HasLevel(selection.lastLevel) || !xsheet.HasFrame(selection.firstFrame) ||
        !xsheet.HasFrame(selection.lastFrame))
        return std::nullopt;
    return selection;
}

bool CanPaste(const CSceneModel& model) {
    return model.sceneOpen && !model.clipboard.IsEmpty();
}

bool CanUndo(const CSceneModel& model) {
    return model.sceneOpen && (model.unfinished.has_value() || model.history.NextUndo() != nullptr);
}

bool CanRedo(const CSceneModel& model) {
    return model.sceneOpen && !model.unfinished && model.history.NextRedo() != nullptr;
}

bool IsInPicture(const CHistory::CStep* step, int frame) {
    return step != nullptr && step->heading.onlyFrame == frame;
}

bool CanEditCellData(const CSceneModel& model) {
    return model.sceneOpen && model.Scene().xsheet.HasLevel(model.cursorLevel) &&
           model.Scene().xsheet.HasFrame(model.cursorFrame) &&
           model.Scene().xsheet.Cell(model.cursorLevel, model.cursorFrame).IsUsed();
}

bool CanInbetween(const CSceneModel& model) {
    const CXSheetSelection& selection = model.selection;
    return model.sceneOpen && model.Scene().xsheet.HasFrame(selection.firstFrame) &&
           model.Scene().xsheet.HasFrame(selection.lastFrame) && selection.lastFrame - selection.firstFrame >= 2;
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

bool HasEditedCel(const CSceneModel& model) {
    return model.celImg.GetLoadState() == LoadState::Cel;
}

} // namespace velmor
