#include "scene/AssetReferences.h"

#include "scene/SceneEdit.h"

#include <map>
#include <optional>

namespace velmor {

namespace {

template<class Matches, class Change>
void ChangeCopied(CCellClipboard& clipboard, Matches matches, Change change) {
    for (CXSheetCell& cell : clipboard.cells)
        if (cell.IsUsed() && matches(cell))
            change(cell);
}

} // namespace

CCellClipboard WithPresentSizes(CCellClipboard clipboard, const Path& sceneFolder) {
    std::map<Path, std::optional<CSize>> sizes; // each file is read once
    for (CXSheetCell& cell : clipboard.cells) {
        if (!cell.IsUsed())
            continue;
        const auto [size, isNew] = sizes.try_emplace(AssetFilePath(sceneFolder, cell.FolderName(), cell.CelName()));
        if (isNew && cell.CheckDimensions(sceneFolder))
            size->second = cell.Size();
        if (size->second)
            cell.SetSize(*size->second);
    }
    return clipboard;
}

CAssetReferences::CAssetReferences(CSceneEdit& edit, CSceneModel& model)
    : m_edit(edit), m_clipboard(model.clipboard), m_pins(model.pins), m_sceneFolder(model.Paths().SceneFolder()) {}

int CAssetReferences::Clear(const std::string& folder, const std::string& name) {
    ChangeCopied(
        m_clipboard, [&](const CXSheetCell& cell) { return cell.Shows(folder, name); },
        [](CXSheetCell& cell) { cell.ClearAsset(); });
    std::erase_if(m_pins, [&](const CPinnedDrawing& pin) { return pin.drawing == CDrawing{folder, name}; });
    return m_edit.XSheet().ClearReferences(folder, name);
}

int CAssetReferences::ClearFolder(const std::string& folder) {
    ChangeCopied(
        m_clipboard, [&](const CXSheetCell& cell) { return cell.FolderName() == folder; },
        [](CXSheetCell& cell) { cell.ClearAsset(); });
    std::erase_if(m_pins, [&](const CPinnedDrawing& pin) { return pin.drawing.folder == folder; });
    return m_edit.XSheet().ClearFolderReferences(folder);
}

int CAssetReferences::Rename(const std::string& folder, const std::string& oldName, const std::string& newName) {
    ChangeCopied(
        m_clipboard, [&](const CXSheetCell& cell) { return cell.Shows(folder, oldName); },
        [&](CXSheetCell& cell) { static_cast<void>(cell.ChangeName(newName)); });
    for (CPinnedDrawing& pin : m_pins)
        if (pin.drawing == CDrawing{folder, oldName})
            pin.drawing.name = newName;
    return m_edit.XSheet().RenameReferences(folder, oldName, newName);
}

int CAssetReferences::Resize(const std::string& folder, const std::string& name) {
    CSize size;
    if (!CCelImg::GetDimensions(AssetFilePath(m_sceneFolder, folder, name), size))
        return 0;
    ChangeCopied(
        m_clipboard, [&](const CXSheetCell& cell) { return cell.Shows(folder, name); },
        [&](CXSheetCell& cell) { cell.SetSize(size); });
    return m_edit.XSheet().ResizeReferences(folder, name, m_sceneFolder);
}

int CAssetReferences::RemoveSound(const std::string& name) {
    return m_edit.Sounds().RemoveNamed(name);
}

int CAssetReferences::RenameSound(const std::string& oldName, const std::string& newName) {
    return m_edit.Sounds().Rename(oldName, newName);
}

} // namespace velmor
