#include "scene/paper/Drawing.h"

#include "scene/SceneModel.h"

namespace velmor {

CDrawing DrawingOf(const CXSheetCell& cell) {
    return {cell.FolderName(), cell.CelName()};
}

CDrawing EditedDrawing(const CSceneModel& model) {
    const Path file = PathOf(model.SceneFile(model.celImg.FilePath()));
    return {Utf8Of(file.parent_path()), Utf8Of(file.stem())};
}

Path FileOf(const CSceneModel& model, const CDrawing& drawing) {
    return AssetFilePath(model.Paths().SceneFolder(), drawing.folder, drawing.name);
}

} // namespace velmor
