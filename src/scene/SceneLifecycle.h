#pragma once

#include "platform/files/Trash.h"
#include "scene/SceneContext.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace velmor {

class CPaletteOperations;
class CSceneSaving;
class CSoundOperations;
struct CSceneSettings;

/// Opening, making and closing scenes, the current folder, and the database folder.
class CSceneLifecycle {
public:
    /// Deleted scenes go to `trash`.
    CSceneLifecycle(CSceneContext context, CPaletteOperations& palettes, CSoundOperations& sounds,
                    CSceneSaving& saving, CTrash trash = {})
        : m_context(context), m_palettes(palettes), m_sounds(sounds), m_saving(saving), m_trash(std::move(trash)) {}

    /// `opened` is called for a scene that was just opened; false closes it again.
    void SetOpened(std::function<bool()> opened) { m_opened = std::move(opened); }

    /// Reads the settings that a document starts with; makes the database folder. `programFolder` gives the default
    /// place of the database, `dataFolder` the place where that cannot be written.
    void ConstructFromSettings(const Path& programFolder, const Path& dataFolder);
    /// Opens the scene and folder of the last run.
    void ReopenLastScene();

    std::string GetSceneName() const;
    std::string GetFolderName() const;
    void SetFolderName(const std::string& folder);
    std::string FindNextCelName() const;
    /// False when there is no such scene or its xsheet cannot be read: nothing has changed then. The scene that is
    /// left is saved first; false as well when it cannot be and the user would rather stay.
    [[nodiscard]] bool OpenScene(const std::string& name);
    /// Opens the scene whose xsheet a file is, also one of another database, which is then the chosen one. False,
    /// after the message, as for OpenScene() and when the file is no scene's xsheet.
    [[nodiscard]] bool OpenSceneFile(const Path& file);
    [[nodiscard]] bool LoadXSheet();
    /// Empties the document after its database folder changed or its scene was deleted.
    void ResetToNoScene();

    void NewScene();
    void AskAndOpenScene();
    void EditSceneSettings();
    void ChooseDatabase();
    void ManageScenes();
    void SetSourceMode(SourceMode mode);
    /// Titles of assets of the shown kind, in list order.
    void SetSourceSelection(std::vector<std::string> names);

private:
    enum class OpenResult { Opened, Stayed, Failed };

    OpenResult TryToOpen(const std::string& name);
    /// Reads a scene without touching the open one; nothing in `scene` when it has no xsheet yet.
    [[nodiscard]] bool ReadScene(const std::string& name, std::optional<CScene>& scene) const;
    /// Cursor, selections and move flags as at the opening of a scene.
    void ShowFromStart();
    void EnterScene(const std::string& name);
    [[nodiscard]] bool AcceptNewScene(const CSceneSettings& settings) const;
    void ReadSettings();

    CSceneContext m_context;
    CPaletteOperations& m_palettes;
    CSoundOperations& m_sounds;
    CSceneSaving& m_saving;
    CTrash m_trash;
    std::function<bool()> m_opened;
};

} // namespace velmor
