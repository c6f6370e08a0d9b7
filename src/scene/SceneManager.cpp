#include "scene/SceneManager.h"

#include "image/Palette.h"
#include "scene/Prompter.h"

namespace velmor {

namespace {

constexpr const char* usualTitle = "Scene Manager";

/// The folder of a side that holds assets of a kind.
Path AssetFolder(const CScenePaths& paths, SourceMode kind, const std::string& folder) {
    return paths.AssetFile(kind, folder, "").parent_path();
}

std::string PlaceOf(const CSceneManager::CSide& side) {
    return "folder '" + side.folder + "' at scene '" + side.scene + "'";
}

bool HasPalette(const CSceneManager::CSide& side) {
    return !side.scene.empty() && !side.folder.empty();
}

} // namespace

CSceneManager::CSceneManager(std::string databaseFolder, IPrompter& prompter, CTrash trash)
    : m_databaseFolder(std::move(databaseFolder)), m_prompter(prompter), m_trash(std::move(trash)) {}

std::vector<std::string> CSceneManager::Scenes() const {
    return ListScenes(m_databaseFolder);
}

std::vector<std::string> CSceneManager::Folders(const std::string& scene) const {
    if (scene.empty())
        return {};
    return ListCelFolders({m_databaseFolder, scene});
}

std::vector<std::string> CSceneManager::Assets(const CSide& side, SourceMode kind) const {
    if (!HasAssets(side, kind))
        return {};
    switch (kind) {
    case SourceMode::Sounds:
        return ListSounds(PathsOf(side));
    case SourceMode::Pictures:
        return ListPictures(PathsOf(side));
    case SourceMode::Cels:
        break;
    }
    return ListCelTitles(PathsOf(side), side.folder);
}

bool CSceneManager::HasAssets(const CSide& side, SourceMode kind) const {
    return !side.scene.empty() && (kind != SourceMode::Cels || !side.folder.empty());
}

void CSceneManager::TransferAssets(SourceMode kind, const CSide& left, const CSide& right,
                                   const std::vector<std::string>& names,
                                   const std::function<void(const std::string&)>& setTitle) {
    if (!HasAssets(left, kind) || !HasAssets(right, kind))
        return;
    setTitle("Transferring...");
    const CScenePaths from = PathsOf(left), to = PathsOf(right);
    if (FolderExists(to.SceneFolder())) // a scene that is gone does not come back
        static_cast<void>(CreateFolder(AssetFolder(to, kind, right.folder))); // or each asset fails, and says so
    for (const std::string& name : names) {
        setTitle("Transferring.." + name);
        TransferAsset(name, from.AssetFile(kind, left.folder, name), to.AssetFile(kind, right.folder, name));
    }
    setTitle(usualTitle);
}

void CSceneManager::TransferAsset(const std::string& name, const Path& from, const Path& to) {
    if (FileExists(to))
        m_prompter.ShowMessage(name + "\n exists, the source will not be transferred.\n"
                                      "First delete the source to overwrite it");
    else if (!CopyFileIfAbsent(from, to))
        m_prompter.ShowMessage(name + "\nFailed to transfer file\nEither the destination exists?? \n"
                                      "or disk full ?? \nor write protected ??");
}

void CSceneManager::TransferPalette(const CSide& left, const CSide& right) {
    if (!HasPalette(left) || !HasPalette(right) ||
        !m_prompter.Confirm("Are you sure you want to overwrite palette of \n" + PlaceOf(right) +
                            "\nwith palette of \n" + PlaceOf(left)))
        return;
    // What is no palette must not take the place of one.
    CPalette palette;
    if (!LoadPalette(PathsOf(left).PaletteFile(left.folder), palette) ||
        !SavePalette(PathsOf(right).PaletteFile(right.folder), palette))
        m_prompter.ShowMessage("\nFailed to transfer file\ndisk full ?? \nor write protected ??");
}

void CSceneManager::MergePalette(const CSide& left, const CSide& right) {
    if (!HasPalette(left) || !HasPalette(right) ||
        !m_prompter.Confirm("Are you sure you want to add palette of \n" + PlaceOf(left) +
                            "\nto the palette of \n" + PlaceOf(right)))
        return;
    CPalette added, merged;
    const Path target = PathsOf(right).PaletteFile(right.folder);
    CStatus status = LoadPalette(PathsOf(left).PaletteFile(left.folder), added);
    if (status)
        status = LoadPalette(target, merged);
    if (status) {
        merged.Append(added);
        status = SavePalette(target, merged);
    }
    if (!status)
        m_prompter.ShowMessage(status.Message());
}

bool CSceneManager::DeleteScene(const std::string& scene) {
    if (scene.empty() || !m_prompter.Confirm("Are you sure you want to \ndelete scene '" + scene +
                                             "'\nwith all its cels, pictures and sounds ? (NO UNDO!)"))
        return false;
    m_deletedScenes.insert(scene);
    const Path folder = CScenePaths(m_databaseFolder, scene).SceneFolder();
    if (!m_trash.Take(folder))
        static_cast<void>(RemoveFolderTree(folder, [this](const Path& file) { // each file is told by itself
            m_prompter.ShowMessage("Problem Deleting file :: " + Utf8Of(file));
        }));
    return true;
}

} // namespace velmor
