#include "app/cli/SceneReader.h"

#include "platform/files/ClaimedFile.h"
#include "scene/SceneEdit.h"
#include "scene/SheetReading.h"

namespace velmor {

bool RequireDatabase(const std::string& database, IPrompter& prompter) {
    if (FolderExists(PathOf(database)))
        return true;
    prompter.ShowMessage("There is no database folder " + database);
    return false;
}

namespace {

std::unique_ptr<CReadScene> ReadScene(const std::string& database, const std::string& scene, IPrompter& prompter,
                                      DamagedNotes damaged) {
    if (!RequireDatabase(database, prompter))
        return nullptr;
    auto read = std::make_unique<CReadScene>(prompter);
    CSceneModel& model = read->model;
    model.history.SetLimit(0); // there is nobody who could undo
    model.databaseFolder = WithSeparator(database);
    model.sceneName = scene;
    if (!FolderExists(model.Paths().SceneFolder())) {
        prompter.ShowMessage("Problem openning the scene");
        return nullptr;
    }
    CScene data;
    if (!ReadSheet(read->context, model.Paths(), damaged, data))
        return nullptr;
    CSceneEdit edit(read->context, "Read Scene", UpdateHint::None, UndoStep::None);
    edit.Scene() = std::move(data);
    edit.CallOff();
    model.sceneOpen = true; // not before: nobody may want the sound
    return read;
}

} // namespace

std::unique_ptr<CReadScene> ReadScene(const std::string& database, const std::string& scene, IPrompter& prompter) {
    return ReadScene(database, scene, prompter, DamagedNotes::Stay);
}

std::unique_ptr<CReadScene> ReadSceneToChange(const std::string& database, const std::string& scene,
                                              IPrompter& prompter) {
    auto read = ReadScene(database, scene, prompter, DamagedNotes::SetAside);
    if (read != nullptr) {
        RemoveAbandoned(PathOf(database));
        RemoveAbandoned(read->model.Paths());
    }
    return read;
}

} // namespace velmor
