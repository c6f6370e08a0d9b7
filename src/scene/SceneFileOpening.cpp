#include "scene/SceneLifecycle.h"
#include "scene/Settings.h"
#include "xsheet/XSheetFile.h"

namespace velmor {

namespace {

constexpr std::string_view sceneEnding = ".scene";

// The scene that a file is the xsheet of, by its place: Name.scene/Name.xsheet.
std::optional<CScenePaths> SceneOf(const Path& file, std::string& database, std::string& name) {
    const std::string folder = Utf8Of(file.parent_path().filename());
    if (!folder.ends_with(sceneEnding) || folder.size() == sceneEnding.size())
        return std::nullopt;
    name = folder.substr(0, folder.size() - sceneEnding.size());
    database = WithSeparator(Utf8Of(file.parent_path().parent_path()));
    CScenePaths paths(database, name);
    return paths.XSheetFile() == file ? std::optional(paths) : std::nullopt;
}

bool IsSameFolder(const std::string& a, const std::string& b) {
    std::error_code error;
    return a == b || std::filesystem::equivalent(PathOf(a), PathOf(b), error);
}

} // namespace

bool CSceneLifecycle::OpenSceneFile(const Path& file) {
    CSceneModel& model = m_context.model;
    std::string database;
    std::string name;
    CScene readable;
    if (!SceneOf(file, database, name)) {
        m_context.Show("This is not the xsheet of a scene:\n" + Utf8Of(file));
        return false;
    }
    if (IsSameFolder(database, model.databaseFolder))
        return (model.sceneOpen && model.sceneName == name) || OpenScene(name);
    // Nothing is left for a scene that cannot be read.
    if (!m_context.Report(velmor::LoadXSheet(file, readable)) || !SaveAllOrAsk("go on"))
        return false;
    model.databaseFolder = database;
    Set(m_context.profile, setting::databaseDir, model.databaseFolder);
    ResetToNoScene();
    ReadSettings();
    m_context.Update(everythingHint);
    return OpenScene(name);
}

} // namespace velmor
