#include "scene/SceneModel.h"

#include <algorithm>

namespace velmor {

void CSceneModel::ClampToXSheet() {
    const int lastLevel = std::max(0, m_scene.xsheet.LevelCount() - 1);
    const int lastFrame = std::max(0, m_scene.xsheet.FrameCount() - 1);
    for (int* level : {&cursorLevel, &selection.firstLevel, &selection.lastLevel})
        *level = std::min(*level, lastLevel);
    for (int* frame : {&cursorFrame, &selection.firstFrame, &selection.lastFrame})
        *frame = std::min(*frame, lastFrame);
    moveSelection.ClampToLevels(m_scene.xsheet.LevelCount());
}

bool CSceneModel::DropEditedImage(const Path& file) {
    if (celImg.FilePath() != file)
        return false;
    celImg.SetModified(false);
    celImg.Clear();
    return true;
}

CStatus CSceneModel::SaveEditedImage(const Path& file) {
    return celImg.FilePath() == file && celImg.IsModified() ? celImg.Save() : CStatus();
}

} // namespace velmor
