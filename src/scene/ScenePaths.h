#pragma once

#include "platform/files/Files.h"

#include <string>
#include <vector>

namespace velmor {

/// What the source view lists and the asset commands act on.
enum class SourceMode { Cels = 1, Sounds = 2, Pictures = 3 };

inline constexpr const char* soundsFolder = "_Sounds_";

/// Where the parts of a scene lie on disk. Names are UTF-8 without extension.
class CScenePaths {
public:
    /// `databaseFolder` ends with the separator.
    CScenePaths(std::string databaseFolder, std::string scene)
        : m_databaseFolder(std::move(databaseFolder)), m_scene(std::move(scene)) {}

    const std::string& SceneName() const { return m_scene; }
    Path SceneFolder() const;
    Path XSheetFile() const;
    Path CelFolder(const std::string& folder) const;
    Path PaletteFile(const std::string& folder) const;
    Path CelFile(const std::string& folder, const std::string& cel) const;
    Path PicturesFolder() const;
    Path PictureFile(const std::string& picture) const;
    Path SoundsFolder() const;
    Path SoundFile(const std::string& sound) const;
    /// What a sound was before it was converted; most sounds have no such file.
    Path OriginalFile(const std::string& sound) const;
    /// The file of an asset as the source view shows it; `folder` is used for cels only.
    Path AssetFile(SourceMode kind, const std::string& folder, const std::string& name) const;

private:
    std::string m_databaseFolder;
    std::string m_scene;
};

/// The folder name by which the xsheet's cells refer to assets of a kind; `folder` is that of cels.
std::string ReferenceFolder(SourceMode kind, const std::string& folder);

/// A folder name with the separator at its end.
std::string WithSeparator(std::string folder);

/// Scenes of a database, sorted: the folders whose names hold ".scene" after the first character, without it.
std::vector<std::string> ListScenes(const std::string& databaseFolder);
/// Cel folders of a scene, sorted: the folders named with letters, digits and spaces only.
std::vector<std::string> ListCelFolders(const CScenePaths& paths);

/// An asset as the source view lists it.
struct CListedAsset {
    std::string title; ///< its file's name without extension, by which all commands and the xsheet know it
    std::string
        shown; ///< what its row says: of a cel the number, without the zeros that its file may have before it

    bool operator==(const CListedAsset&) const = default;
};

/// The assets of a kind in the order of the source view; `folder` is used for cels only. Cels come by their number,
/// with lettered variants after it (1, 2, 2a, 10); those without a number are left out.
std::vector<CListedAsset> ListAssets(const CScenePaths& paths, SourceMode kind, const std::string& folder);
/// All cels of a folder in that order, those without a number at the end.
std::vector<std::string> ListCelTitles(const CScenePaths& paths, const std::string& folder);
std::vector<std::string> ListPictures(const CScenePaths& paths);
std::vector<std::string> ListSounds(const CScenePaths& paths);
/// One more than the largest leading number of the folder's cels, 1 when there are none.
int NextCelNumber(const CScenePaths& paths, const std::string& folder);
/// Removes what programs that are gone were making in a scene's folders.
void RemoveAbandoned(const CScenePaths& paths);
/// A name for a copy of a picture or sound that no file has yet, by counting on from its own: Sky, Sky2, Sky3.
std::string NextFreeName(const CScenePaths& paths, SourceMode kind, const std::string& name);

} // namespace velmor
