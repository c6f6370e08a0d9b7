#pragma once

#include "scene/SceneContext.h"

#include <optional>
#include <string>

namespace velmor {

class CSceneEdit;
class CSceneLifecycle;
struct CFileRequest;
struct CLineRules;

/// Drawings and pictures from files outside the database.
class CImportOperations {
public:
    CImportOperations(CSceneContext context, CSceneLifecycle& lifecycle)
        : m_context(context), m_lifecycle(lifecycle) {}

    void AskAndImportCels();
    void AskAndImportPictures();
    void EditImportSettings();

    /// One file into the current folder, or into the pictures folder, under a name (of a cel, without zeros before
    /// its number). An asset of that name is
    /// replaced: the cells that show it take the new size, and the cel editor, when it holds it, is emptied without
    /// saving. On failure the reader's text and then "Error in import" have been shown and nothing is changed.
    [[nodiscard]] bool ImportCel(const Path& file, const std::string& name);
    [[nodiscard]] bool ImportPicture(const Path& file, const std::string& name);

    /// The same without texts and without the closing update of the views, within an edit that keeps the asset's
    /// file; `name` is one that an asset of its kind can have. The failure of a file of a kind that is not read has
    /// no text.
    CStatus Import(CSceneEdit& edit, const Path& file, SourceMode kind, const std::string& name,
                   const CLineRules& rules);

    /// The name dialog of a cel or picture; a cel's proposes the next number. The name to store it under, or
    /// nothing when it was cancelled.
    std::optional<std::string> AskAssetName(SourceMode kind) const;
    /// Writes an image as an asset, replacing one of that name, tells the views, and shows the assets of its kind.
    /// When it cannot be written its text and then `failure` are shown.
    [[nodiscard]] bool StoreImage(CCelImg& image, SourceMode kind, const std::string& name, const char* failure);

    // The rules that name dialogs apply: naming rule, and the question before something is overwritten. What is
    // accepted for a cel is stored under its StoredCelName().
    [[nodiscard]] bool AcceptCelName(const std::string& name) const;
    [[nodiscard]] bool AcceptPictureName(const std::string& name) const;

private:
    bool CanImportCels() const;
    bool CanImportPictures() const;
    /// Asks for the files and for a name for each. `kind` is that of the new assets.
    void ImportFiles(const CFileRequest& request, SourceMode kind);
    /// Reads a file and writes it as an asset, without the closing update of the views.
    [[nodiscard]] bool Store(const Path& file, SourceMode kind, const std::string& name);
    /// Writes an image as an asset, as a step that `deed` begins the name of. False after the message.
    bool Write(CCelImg& image, SourceMode kind, const std::string& name, const char* deed);
    CStatus Write(CSceneEdit& edit, CCelImg& image, SourceMode kind, const std::string& name);
    void ShowReplaced(CSceneEdit& edit, SourceMode kind, const std::string& name);

    CSceneContext m_context;
    CSceneLifecycle& m_lifecycle;
};

} // namespace velmor
