#pragma once

#include "scene/SceneContext.h"

#include <string>

namespace velmor {

class CImportOperations;
class CSceneLifecycle;

/// Making folders and cels, and bringing an asset into the cel editor and back to disk.
class CAssetOperations {
public:
    CAssetOperations(CSceneContext context, CSceneLifecycle& lifecycle, CImportOperations& imports)
        : m_context(context), m_lifecycle(lifecycle), m_imports(imports) {}

    void OnAssetsNewfolder();
    void OnAssetsNewcel();
    /// Loads an asset of the shown kind (a cel of the current folder, or a picture) into the cel editor.
    void EditCel(const std::string& name);
    /// Writes the image under edit, so that the camera view shows the change.
    void OnCelUpdatecamera();

private:
    bool AcceptFolderName(const std::string& name) const;

    CSceneContext m_context;
    CSceneLifecycle& m_lifecycle;
    CImportOperations& m_imports;
};

} // namespace velmor
