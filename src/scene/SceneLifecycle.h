#pragma once

#include "scene/SceneContext.h"

#include <string>

namespace velmor {

class CPaletteOperations;
class CSoundOperations;

/// Opening, making, saving and closing scenes, the current folder, and the database folder.
class CSceneLifecycle {
public:
    CSceneLifecycle(CSceneContext context, CPaletteOperations& palettes, CSoundOperations& sounds)
        : m_context(context), m_palettes(palettes), m_sounds(sounds) {}

    /// Reads the settings that a document starts with; makes the database folder. `programFolder` gives the default
    /// place of the database, `dataFolder` the place where that cannot be written.
    void ConstructFromSettings(const Path& programFolder, const Path& dataFolder);
    /// Opens the scene and folder of the last run.
    void ReopenLastScene();

    std::string GetSceneName() const;
    std::string GetFolderName() const;
    void SetFolderName(const std::string& folder);
    std::string FindNextCelName() const;
    /// False when there is no such scene or its xsheet cannot be read; a scene that was open then stays open. The
    /// scene that is left is saved first.
    bool OpenScene(const std::string& name);
    bool LoadXSheet();
    /// Writes the xsheet of the open scene; shows what went wrong.
    bool SaveXSheet();
    /// Closes the image under edit, writing it when it has changes. Where it cannot be written the message is shown
    /// and the image stays; false then.
    bool CloseEditedImage();
    /// Empties the document after its database folder changed or its scene was deleted.
    void ResetToNoScene();

    void OnFileNewscene();
    void OnFileOpenscene();
    void OnFileScenesettings();
    /// False when something could not be written.
    bool OnFileSaveall();
    void OnFileSettings();
    void OnFileScenemanager();
    void SetSourceMode(SourceMode mode);

private:
    bool WriteXSheetFile() const;
    void AdoptXSheet(CXSheetData data);
    void ResetXSheet();
    void EnterScene(const std::string& name);
    bool AcceptNewScene(const CSceneSettings& settings) const;
    void ReadSettings();

    CSceneContext m_context;
    CPaletteOperations& m_palettes;
    CSoundOperations& m_sounds;
};

} // namespace velmor
