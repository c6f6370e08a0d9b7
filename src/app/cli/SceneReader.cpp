#include "app/cli/SceneReader.h"

namespace velmor {

bool RequireDatabase(const std::string& database, IPrompter& prompter) {
    if (FolderExists(PathOf(database)))
        return true;
    prompter.ShowMessage("There is no database folder " + database);
    return false;
}

std::unique_ptr<CReadScene> ReadScene(const std::string& database, const std::string& scene, IPrompter& prompter) {
    if (!RequireDatabase(database, prompter))
        return nullptr;
    auto read = std::make_unique<CReadScene>(prompter);
    CSceneModel& model = read->model;
    model.databaseFolder = WithSeparator(database);
    model.sceneName = scene;
    if (!FolderExists(model.Paths().SceneFolder())) {
        prompter.ShowMessage("Problem openning the scene");
        return nullptr;
    }
    CXSheetData data;
    if (!read->context.Report(LoadXSheet(model.Paths().XSheetFile(), data)))
        return nullptr;
    model.sceneOpen = true;
    model.geometry = data.geometry;
    model.xsheet = std::move(data.xsheet);
    model.camera = std::move(data.camera);
    model.sounds.Set(std::move(data.sounds));
    return read;
}

} // namespace velmor
