#pragma once

#include "platform/Status.h"
#include "platform/files/Trash.h"
#include "scene/ScenePaths.h"

#include <functional>
#include <set>
#include <string>
#include <vector>

namespace velmor {

class IPrompter;

/// The work of the scene manager, on the files of a database: copying assets from a scene on the left to one on the
/// right, palettes, deleting scenes. The dialog shows the lists and calls the operations; questions and messages go
/// through the prompter, which outlives it.
class CSceneManager {
public:
    /// One side of the dialog; an empty name is "none chosen".
    struct CSide {
        std::string scene;
        std::string folder;
    };

    /// Deleted scenes go to `trash`.
    CSceneManager(std::string databaseFolder, IPrompter& prompter, CTrash trash = {});

    std::vector<std::string> Scenes() const;
    std::vector<std::string> Folders(const std::string& scene) const;
    /// What an asset list shows: of cels those of the side's folder.
    std::vector<std::string> Assets(const CSide& side, SourceMode kind) const;

    /// Copies the named assets, in their order. `setTitle` is told what the dialog's title is to be, the usual one
    /// at the end. Each asset that cannot be copied has its message; the others are still copied.
    void TransferAssets(SourceMode kind, const CSide& left, const CSide& right,
                        const std::vector<std::string>& names,
                        const std::function<void(const std::string&)>& setTitle);
    /// Asks, and replaces the right palette by the left one.
    void TransferPalette(const CSide& left, const CSide& right);
    /// Asks, and appends the left palette's colours to the right palette.
    void MergePalette(const CSide& left, const CSide& right);
    /// Asks, and deletes a scene with all its files; nothing for an empty name. Without a trash to take it, a file
    /// that cannot be deleted has its message and the others still go. True when something was deleted.
    [[nodiscard]] bool DeleteScene(const std::string& scene);
    /// The scenes whose deletion was confirmed.
    const std::set<std::string>& DeletedScenes() const { return m_deletedScenes; }

private:
    CScenePaths PathsOf(const CSide& side) const { return {m_databaseFolder, side.scene}; }
    /// Whether enough is chosen on a side for it to have assets of a kind.
    bool HasAssets(const CSide& side, SourceMode kind) const;
    void TransferAsset(const std::string& name, const Path& from, const Path& to);

    std::string m_databaseFolder; ///< ends with the separator
    IPrompter& m_prompter;
    CTrash m_trash;
    std::set<std::string> m_deletedScenes;
};

} // namespace velmor
