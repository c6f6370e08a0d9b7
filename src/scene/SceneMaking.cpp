#include "scene/SceneMaking.h"

#include "platform/files/ClaimedFile.h"
#include "xsheet/XSheetFile.h"

namespace velmor {

bool MakeScene(const CScenePaths& paths, const CScene& scene) {
    const Path database = FolderOf(paths.SceneFolder());
    if (!CreateFolder(database))
        return false;
    const std::optional<CClaimedFolder> making = CClaimedFolder::Make(database);
    if (!making)
        return false;
    const CScenePaths made(WithSeparator(Utf8Of(making->Name())), paths.SceneName());
    return CreateFolder(made.SceneFolder()) && SaveXSheet(made.XSheetFile(), scene) &&
           PlaceScene(made.SceneFolder(), paths);
}

bool PlaceScene(const Path& from, const CScenePaths& paths) {
    if (!MoveIfAbsent(from, paths.SceneFolder()))
        return false;
    FlushFolder(FolderOf(paths.SceneFolder()));
    return true;
}

} // namespace velmor
