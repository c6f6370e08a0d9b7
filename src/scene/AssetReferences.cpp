#include "scene/AssetReferences.h"

#include "scene/SceneModel.h"

namespace velmor {

namespace {

template<class Matches, class Change>
void ChangeCopied(CCellClipboard& clipboard, Matches matches, Change change) {
    for (CXSheetCell& cell : clipboard.cells)
        if (cell.IsUsed() && matches(cell))
            change(cell);
}

} // namespace

int CAssetReferences::Clear(const std::string& folder, const std::string& name) {
    if (m_model.undo)
        m_model.undo->xsheet.ClearReferences(folder, name);
    ChangeCopied(
        m_model.clipboard, [&](const CXSheetCell& cell) { return cell.Shows(folder, name); },
        [](CXSheetCell& cell) { cell.Clear(); });
    return m_model.xsheet.ClearReferences(folder, name);
}

int CAssetReferences::ClearFolder(const std::string& folder) {
    if (m_model.undo)
        m_model.undo->xsheet.ClearFolderReferences(folder);
    ChangeCopied(
        m_model.clipboard, [&](const CXSheetCell& cell) { return cell.FolderName() == folder; },
        [](CXSheetCell& cell) { cell.Clear(); });
    return m_model.xsheet.ClearFolderReferences(folder);
}

int CAssetReferences::Rename(const std::string& folder, const std::string& oldName, const std::string& newName) {
    if (m_model.undo)
        m_model.undo->xsheet.RenameReferences(folder, oldName, newName);
    ChangeCopied(
        m_model.clipboard, [&](const CXSheetCell& cell) { return cell.Shows(folder, oldName); },
        [&](CXSheetCell& cell) { static_cast<void>(cell.ChangeName(newName)); });
    return m_model.xsheet.RenameReferences(folder, oldName, newName);
}

int CAssetReferences::Resize(const std::string& folder, const std::string& name) {
    const Path sceneFolder = m_model.Paths().SceneFolder();
    CSize size;
    if (!CCelImg::GetDimensions(AssetFilePath(sceneFolder, folder, name), size))
        return 0;
    if (m_model.undo)
        m_model.undo->xsheet.ResizeReferences(folder, name, sceneFolder);
    ChangeCopied(
        m_model.clipboard, [&](const CXSheetCell& cell) { return cell.Shows(folder, name); },
        [&](CXSheetCell& cell) { cell.SetSize(size); });
    return m_model.xsheet.ResizeReferences(folder, name, sceneFolder);
}

int CAssetReferences::RemoveSound(const std::string& name) {
    if (m_model.undo)
        m_model.undo->sounds.RemoveNamed(name);
    return m_model.sounds.RemoveNamed(name);
}

int CAssetReferences::RenameSound(const std::string& oldName, const std::string& newName) {
    if (m_model.undo)
        m_model.undo->sounds.Rename(oldName, newName);
    return m_model.sounds.Rename(oldName, newName);
}

} // namespace velmor
