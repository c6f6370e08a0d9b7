#pragma once

#include "xsheet/XSheet.h"

#include <string>

namespace velmor {

class CSceneEdit;
struct CPinnedDrawing;
struct CSceneModel;

/// Keeps what names assets in step with their files: the cells and sounds of the xsheet, the copied
/// cells, and the drawings on the light table. The folder of a picture is the pictures folder. Each function
/// returns how many cells or sounds of the xsheet it has changed.
class CAssetReferences {
public:
    /// Works within an edit of the model.
    CAssetReferences(CSceneEdit& edit, CSceneModel& model);

    /// Empties the cells that show an asset, or any cel of a folder.
    int Clear(const std::string& folder, const std::string& name);
    int ClearFolder(const std::string& folder);
    int Rename(const std::string& folder, const std::string& oldName, const std::string& newName);
    /// Gives the cells that show an asset the size that its file has now; none when it cannot be read.
    int Resize(const std::string& folder, const std::string& name);
    int RemoveSound(const std::string& name);
    int RenameSound(const std::string& oldName, const std::string& newName);

private:
    CSceneEdit& m_edit;
    CCellClipboard& m_clipboard;
    std::vector<CPinnedDrawing>& m_pins;
    Path m_sceneFolder;
};

/// Copied cells with the sizes that their drawings have now in the scene that they are pasted into: those may have
/// changed since, by another program or in the folder of another scene. A cell whose file cannot be read stays as
/// it is.
CCellClipboard WithPresentSizes(CCellClipboard clipboard, const Path& sceneFolder);

} // namespace velmor
