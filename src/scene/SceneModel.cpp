#include "scene/SceneModel.h"

#include "scene/history/PaintingStep.h"

#include <algorithm>
#include <utility>

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
    unfinished.reset();
    celImg.SetModified(false);
    celImg.Clear();
    return true;
}

void CSceneModel::FinishPainting() {
    if (!unfinished)
        return;
    CUnfinishedPainting finished = std::move(*unfinished);
    unfinished.reset();
    LeavePaintingStep(*this, finished.name, finished.before);
}

CStatus CSceneModel::SaveEditedImage() {
    FinishPainting();
    if (!celImg.IsModified())
        return {};
    if (const std::string file = SceneFile(celImg.FilePath()); history.HasJournal() && !file.empty())
        history.NoteSaving(file, [this] { return celImg.FileBytes(); });
    CStatus saved = celImg.Save();
    if (saved)
        NoteEditedImage();
    return saved;
}

CStatus CSceneModel::SaveEditedImage(const Path& file) {
    return celImg.FilePath() == file ? SaveEditedImage() : CStatus();
}

void CSceneModel::NoteEditedImage() {
    const std::string file = SceneFile(celImg.FilePath());
    if (!file.empty() && history.HasJournal())
        history.NoteSaved(file, CFileStamp::Of(celImg.FilePath()));
}

std::string CSceneModel::SceneFile(const Path& file) const {
    if (!sceneOpen || file.empty())
        return {};
    const std::string name = file.lexically_relative(Paths().SceneFolder()).generic_string();
    return IsSceneFile(name) ? name : std::string();
}

CHistorySession CSceneModel::Session() const {
    return {folderName, sourceMode, SceneFile(celImg.FilePath()), cursorLevel, cursorFrame, selection};
}

} // namespace velmor
