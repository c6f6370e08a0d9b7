#pragma once

#include "platform/files/Trash.h"
#include "scene/SceneContext.h"

#include "xsheet/SheetCell.h"

#include <functional>
#include <optional>
#include <string>

namespace velmor {

class CImportOperations;
class CSceneEdit;
class CSceneLifecycle;
class CSoundOperations;
struct CDrawing;
struct CNewCelValues;

/// Making folders and cels, deleting, renaming and duplicating assets, and bringing one into the cel editor and
/// back to disk. What names an asset follows it: cells, placed sounds, the cel editor, the selection.
class CAssetOperations {
public:
    /// Plays a sound of the scene by its name.
    using SoundPlayer = std::function<void(const std::string& name)>;

    /// What is deleted goes to `trash`, as far as it takes it. Where `play` is given, a sound that is opened is
    /// heard.
    CAssetOperations(CSceneContext context, CSceneLifecycle& lifecycle, CImportOperations& imports,
                     CSoundOperations& sounds, SoundPlayer play = {}, CTrash trash = {})
        : m_context(context),
          m_lifecycle(lifecycle),
          m_imports(imports),
          m_sounds(sounds),
          m_play(std::move(play)),
          m_trash(std::move(trash)) {}

    void NewFolder();
    /// Makes a blank cel, selects it in the asset list and brings it into the cel editor.
    void NewCel();
    /// Deletes the selected assets of the shown kind, up to the first file that resists.
    void DeleteSelected();
    /// Deletes the current folder.
    void DeleteFolder();
    /// Renames the first selected asset; one that has the new name already is replaced.
    void RenameSelected();
    /// Copies the first selected asset; an existing file is never replaced.
    void DuplicateSelected();
    /// Loads an asset of the shown kind (a cel of the current folder, or a picture) into the cel editor; plays a
    /// sound.
    void EditCel(const std::string& name);
    /// Loads the drawing of a cell into the cel editor. Its folder becomes the current one, or pictures are shown,
    /// and it is selected. Nothing for an empty cell; a file that is gone is told of and nothing else changes.
    void EditDrawing(CSheetCell cell);
    /// The same for a drawing by its name.
    void OpenDrawing(const CDrawing& drawing);
    /// Makes a blank cel in the current folder within an edit, selects it and brings it into the cel editor. False,
    /// with the edit called off, when it could not be written: the message has been shown.
    [[nodiscard]] bool MakeCel(CSceneEdit& edit, const std::string& name, CSize size);
    /// Writes the image under edit, so that the camera view shows the change.
    void UpdateCamera();

private:
    [[nodiscard]] bool AcceptFolderName(const std::string& name) const;
    [[nodiscard]] bool AcceptNewCel(const CNewCelValues& cel) const;
    /// Tells of a cel that was just written. It comes into the cel editor, unless what is there cannot be saved.
    void ShowNewCel(CSceneEdit& edit, const std::string& name, CCelImg image);
    /// The rule for the name of an asset of the shown kind.
    [[nodiscard]] bool AcceptAssetName(const std::string& name) const;
    /// The title that an asset of the shown kind gets when its name is entered.
    std::string StoredName(const std::string& entered) const;
    /// The file of an asset of the shown kind.
    Path AssetFile(const std::string& name) const;
    /// What goes along with a sound; nothing where there is none, or other assets are shown.
    std::optional<Path> OriginalOf(const std::string& name) const;
    void CopyOriginal(const std::string& from, const std::string& to) const;
    [[nodiscard]] bool DeleteFile(const Path& file) const;
    // What follows when files are gone or moved. They return what the views are to be told.
    UpdateHint ForgetAsset(CSceneEdit& edit, const std::string& name);
    UpdateHint FollowRename(CSceneEdit& edit, const std::string& oldName, const std::string& newName,
                            bool replaced);
    UpdateHint FollowSoundRename(CSceneEdit& edit, const std::string& oldName, const std::string& newName,
                                 bool replaced);
    void ForgetFolder(CSceneEdit& edit);

    CSceneContext m_context;
    CSceneLifecycle& m_lifecycle;
    CImportOperations& m_imports;
    CSoundOperations& m_sounds;
    SoundPlayer m_play;
    CTrash m_trash;
};

} // namespace velmor
