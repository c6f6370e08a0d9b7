#include "scene/SceneLifecycle.h"

#include "platform/files/ClaimedFile.h"
#include "platform/files/SystemPaths.h"
#include "scene/DialogRequests.h"
#include "scene/EditedImage.h"
#include "scene/NamingRules.h"
#include "scene/PaletteOperations.h"
#include "scene/SceneEdit.h"
#include "scene/SceneMaking.h"
#include "scene/SceneManager.h"
#include "scene/SceneSaving.h"
#include "scene/Settings.h"
#include "scene/SheetReading.h"
#include "scene/SoundOperations.h"
#include "xsheet/XSheetFile.h"

#include <algorithm>

namespace velmor {

namespace {

constexpr std::string_view sceneEnding = ".scene";
constexpr int mostHistoryMegabytes = 1 << 20;

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

void CSceneLifecycle::ConstructFromSettings(const Path& programFolder, const Path& dataFolder) {
    CSceneModel& model = m_context.model;
    model.databaseFolder = Get(m_context.profile, setting::databaseDir);
    if (model.databaseFolder.empty()) {
        const Path& parent = FolderIsWritable(programFolder) ? programFolder : dataFolder;
        model.databaseFolder = WithSeparator(Utf8Of(parent / "Database"));
        Set(m_context.profile, setting::databaseDir, model.databaseFolder);
    }
    model.databaseFolder = WithSeparator(model.databaseFolder);
    static_cast<void>(CreateFolder(PathOf(model.databaseFolder))); // or the first scene fails, and says so
    RemoveAbandoned(PathOf(model.databaseFolder));
    ReadSettings();
    m_sounds.ResetSoundBuffer();
    m_palettes.ClearPalette();
    m_palettes.ReadChoices();
}

void CSceneLifecycle::ReadSettings() {
    m_context.model.importThreshold = std::clamp(Get(m_context.profile, setting::importThreshold), 0, 255);
    const int megabytes = std::clamp(Get(m_context.profile, setting::historyMegabytes), 0, mostHistoryMegabytes);
    m_context.model.history.SetLimit(static_cast<std::uint64_t>(megabytes) << 20);
    m_context.model.motionPathSetup = std::clamp(Get(m_context.profile, setting::motionPathSetup), 0, 2);
}

void CSceneLifecycle::ReopenLastScene() {
    const std::string scene = Get(m_context.profile, setting::lastScene);
    // Read before opening, which empties it.
    const std::string folder = Get(m_context.profile, setting::lastFolder);
    if (!scene.empty()) {
        const OpenResult result = TryToOpen(scene);
        if (result == OpenResult::Failed) {
            m_context.Show("Problem opening the last open scene");
            Set(m_context.profile, setting::lastScene, "");
        } else if (result == OpenResult::Stayed) {
            Set(m_context.profile, setting::lastScene, scene); // to be asked again
        } else if (!folder.empty() && m_context.model.folderName.empty() &&
                   FolderExists(m_context.model.Paths().CelFolder(folder))) {
            SetFolderName(folder); // unless recovered work brought its own
        }
    }
    m_context.Update(UpdateHint::AssetLists);
}

std::string CSceneLifecycle::GetSceneName() const {
    const CSceneModel& model = m_context.model;
    return m_context.Require(model.sceneOpen, "Internal error : scene not open for getscenename") ? model.sceneName
                                                                                                  : std::string();
}

std::string CSceneLifecycle::GetFolderName() const {
    const CSceneModel& model = m_context.model;
    return m_context.Require(model.sceneOpen, "Internal error : scene not open for getfoldername")
               ? model.folderName
               : std::string();
}

void CSceneLifecycle::SetFolderName(const std::string& folder) {
    CSceneModel& model = m_context.model;
    if (!m_context.Require(model.sceneOpen, "Internal error : scene not open for setfoldername"))
        return;
    if (!CEditedImage(m_context).Close())
        return;
    Set(m_context.profile, setting::lastFolder, folder);
    model.folderName = folder;
    if (!folder.empty()) {
        if (!FileExists(model.Paths().PaletteFile(folder))) {
            m_palettes.ClearPalette();
            static_cast<void>(m_palettes.SaveColors());
        }
        static_cast<void>(m_palettes.LoadColors()); // it has shown what is wrong and set a palette
    }
    m_context.Update(folderHint);
}

std::string CSceneLifecycle::FindNextCelName() const {
    const CSceneModel& model = m_context.model;
    if (!m_context.Require(model.sceneOpen, "Internal error : scene not open for FindNextCelName") ||
        !m_context.Require(!model.folderName.empty(), "Internal error : folder not open for FindNextCelName"))
        return {};
    return std::to_string(NextCelNumber(model.Paths(), model.folderName));
}

bool CSceneLifecycle::LoadXSheet() {
    const CSceneModel& model = m_context.model;
    if (!m_context.Require(model.sceneOpen, "Internal Error :  Scene not open in LoadXSheet"))
        return false;
    CScene scene;
    if (!ReadSheet(m_context, model.Paths(), DamagedNotes::SetAside, scene))
        return false;
    CSceneEdit edit(m_context, "Load XSheet", UpdateHint::None);
    edit.Scene() = std::move(scene);
    edit.PrepareSound();
    return true;
}

void CSceneLifecycle::ShowFromStart() {
    CSceneModel& model = m_context.model;
    model.cursorLevel = 0;
    model.cursorFrame = 0;
    model.lastSetFrame = 0;
    model.selection = {};
    model.moveSelection.Reset();
}

void CSceneLifecycle::EnterScene(const std::string& name) {
    CSceneModel& model = m_context.model;
    model.sceneName = name;
    model.sceneOpen = true;
    model.folderName.clear();
    model.sourceSelection.clear();
    model.pins.clear();
    Set(m_context.profile, setting::lastScene, name);
    RemoveAbandoned(model.Paths());
}

bool CSceneLifecycle::OpenScene(const std::string& name) {
    return TryToOpen(name) == OpenResult::Opened;
}

CSceneLifecycle::OpenResult CSceneLifecycle::TryToOpen(const std::string& name) {
    const std::shared_ptr<void> wait = m_context.prompter.BeginWait();
    const CSceneModel& model = m_context.model;
    // The scene that is open comes back as it is on the screen; of another one nothing is given up before it is
    // read.
    const bool comesBack = model.sceneOpen && name == model.sceneName;
    if (comesBack && !m_saving.WriteAllOrAsk())
        return OpenResult::Stayed;
    std::optional<CScene> scene;
    if (!ReadScene(name, scene))
        return OpenResult::Failed;
    if (!comesBack && !m_saving.WriteAllOrAsk())
        return OpenResult::Stayed;

    CEditedImage(m_context).Discard();
    EnterScene(name);
    ShowFromStart();
    {
        CSceneEdit edit(m_context, "Open Scene", everythingHint, UndoStep::Forget);
        edit.PrepareNoSound(); // what is recovered may have other sounds
        edit.Scene() = scene.value_or(CScene());
        if (!scene)
            static_cast<void>(m_saving.SaveXSheet()); // it has shown why not; Save All tries again
    }
    if (!m_opened || m_opened()) {
        m_sounds.PrepareSoundBuffer();
        return OpenResult::Opened;
    }
    ResetToNoScene();
    m_context.Update(everythingHint);
    return OpenResult::Stayed;
}

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
    if (!m_context.Report(velmor::LoadXSheet(file, readable)) || !m_saving.SaveAllOrAsk("go on"))
        return false;
    model.databaseFolder = database;
    RemoveAbandoned(PathOf(model.databaseFolder));
    Set(m_context.profile, setting::databaseDir, model.databaseFolder);
    ResetToNoScene();
    ReadSettings();
    m_context.Update(everythingHint);
    return OpenScene(name);
}

bool CSceneLifecycle::ReadScene(const std::string& name, std::optional<CScene>& scene) const {
    const CScenePaths paths(m_context.model.databaseFolder, name);
    if (name.find(static_cast<char>(Path::preferred_separator)) != std::string::npos ||
        !FolderExists(paths.SceneFolder()))
        return false;
    if (!FileExists(paths.XSheetFile()))
        return true;
    return ReadSheet(m_context, paths, DamagedNotes::SetAside, scene.emplace());
}

void CSceneLifecycle::ResetToNoScene() {
    CSceneModel& model = m_context.model;
    model.sceneOpen = false;
    model.sceneName.clear();
    model.folderName.clear();
    model.sourceSelection.clear();
    model.sourceMode = SourceMode::Cels;
    model.clipboard = {};
    CEditedImage(m_context).Discard(); // its scene is saved already, or gone, or given up
    ShowFromStart();
    CSceneEdit edit(m_context, "Close Scene", UpdateHint::None, UndoStep::Forget);
    edit.Scene() = CScene();
    model.soundBuffer.reset();
    m_palettes.ClearPalette();
    Set(m_context.profile, setting::lastScene, "");
}

void CSceneLifecycle::AskAndOpenScene() {
    const CSceneModel& model = m_context.model;
    const std::vector<std::string> scenes = ListScenes(model.databaseFolder);
    if (scenes.empty()) {
        m_context.prompter.ShowVelmorMessage(
            "There are no scenes avaliable yet.\nUse 'New Scene' to create a new scene");
        return;
    }
    const std::optional<std::string> chosen = m_context.prompter.Ask(COpenSceneRequest{scenes});
    if (!chosen)
        return;
    if (model.sceneOpen && *chosen == model.sceneName)
        m_context.Show("The scene is already open.");
    else if (TryToOpen(*chosen) == OpenResult::Failed)
        m_context.Show("Problem openning the scene");
}

bool CSceneLifecycle::AcceptNewScene(const CSceneSettings& settings) const {
    if (!m_context.Report(CheckSceneName(settings.name)))
        return false;
    const CScenePaths paths(m_context.model.databaseFolder, settings.name);
    if (!m_context.Require(!FolderExists(paths.SceneFolder()),
                           "Scene already exists. Use 'Open Scene' to open it."))
        return false;
    return m_context.Report(CheckSceneSettings(settings));
}

void CSceneLifecycle::NewScene() {
    const CSceneModel& model = m_context.model;
    const std::optional<CSceneSettings> settings = m_context.prompter.Ask(CSceneSettingsRequest{
        true, WithPreset({}, palPreset), [this](const CSceneSettings& values) { return AcceptNewScene(values); }});
    if (!settings || !m_saving.SaveAllOrAsk("go on"))
        return;
    CScene scene;
    scene.xsheet.SetFrameCount(settings->length);
    // The rate is not taken from the answer: a new scene has the default one, and Scene Settings changes it.
    scene.geometry = settings->geometry;
    scene.geometry.frameRate = CSceneGeometry().frameRate;
    if (!MakeScene({model.databaseFolder, settings->name}, scene)) {
        m_context.Show(sceneNotMade);
        return;
    }
    CEditedImage(m_context).Discard();
    EnterScene(settings->name);
    ShowFromStart();
    CSceneEdit edit(m_context, "New Scene", everythingHint, UndoStep::Forget);
    edit.Scene() = std::move(scene);
    edit.End();
    if (m_opened)
        static_cast<void>(m_opened()); // a new scene has nothing that was not saved
}

void CSceneLifecycle::EditSceneSettings() {
    const CSceneModel& model = m_context.model;
    if (!model.sceneOpen)
        return;
    const CSceneSettings current{model.sceneName, model.Scene().xsheet.FrameCount(), model.Scene().geometry,
                                 customPreset};
    const std::optional<CSceneSettings> settings =
        m_context.prompter.Ask(CSceneSettingsRequest{false, current, [this](const CSceneSettings& values) {
                                                         return m_context.Report(CheckSceneSettings(values));
                                                     }});
    if (!settings)
        return;
    CSceneEdit edit(m_context, "Scene Settings", structureAndPictureHint);
    edit.Geometry() = settings->geometry;
    edit.XSheet().SetFrameCount(settings->length);
}

void CSceneLifecycle::ChooseDatabase() {
    CSceneModel& model = m_context.model;
    const std::optional<std::string> chosen = m_context.prompter.Ask(CDatabaseFolderRequest{model.databaseFolder});
    if (!chosen || chosen->empty() || WithSeparator(*chosen) == model.databaseFolder ||
        !m_saving.SaveAllOrAsk("go on"))
        return;
    model.databaseFolder = WithSeparator(*chosen);
    static_cast<void>(CreateFolder(PathOf(model.databaseFolder))); // or the first scene fails, and says so
    RemoveAbandoned(PathOf(model.databaseFolder));
    Set(m_context.profile, setting::databaseDir, model.databaseFolder);
    ResetToNoScene();
    ReadSettings();
    m_context.Update(everythingHint);
}

void CSceneLifecycle::SetSourceMode(SourceMode mode) {
    m_context.model.sourceMode = mode;
    m_context.model.sourceSelection.clear(); // names of another kind of asset
    m_context.Update(UpdateHint::AssetLists);
}

void CSceneLifecycle::SetSourceSelection(std::vector<std::string> names) {
    m_context.model.sourceSelection = std::move(names);
}

void CSceneLifecycle::ManageScenes() {
    CSceneModel& model = m_context.model;
    if (ListScenes(model.databaseFolder).empty()) {
        m_context.prompter.ShowVelmorMessage("There are no scenes avaliable yet.\n"
                                             "You should have at least one scene in order to open scene manager");
        return;
    }
    if (!m_saving.SaveAllOrAsk("go on"))
        return;
    CSceneManager manager(model.databaseFolder, m_context.prompter, m_trash);
    m_context.prompter.RunSceneManager(manager);
    if (model.sceneOpen && manager.DeletedScenes().contains(model.sceneName)) {
        ResetToNoScene();
        ReadSettings();
        m_context.Update(everythingHint);
        return;
    }
    // Its file may have been replaced.
    if (model.HasFolder())
        static_cast<void>(m_palettes.LoadColors()); // it has shown what is wrong and set a palette
    m_context.Update(paletteReloadHint);
}

} // namespace velmor
