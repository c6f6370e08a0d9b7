#include "scene/AssetOperations.h"

#include "scene/DialogRequests.h"
#include "scene/ImportOperations.h"
#include "scene/NamingRules.h"
#include "scene/SceneLifecycle.h"

namespace velmor {

bool CAssetOperations::AcceptFolderName(const std::string& name) const {
    return m_context.Report(CheckFolderName(name)) &&
           m_context.Require(!FolderExists(m_context.model.Paths().CelFolder(name)),
                             "Folder already exists. Use the drop down list to view it.");
}

void CAssetOperations::OnAssetsNewfolder() {
    const CSceneModel& model = m_context.model;
    if (!model.sceneOpen)
        return;
    const std::optional<std::string> name = m_context.prompter.AskName(
        {NameKind::Folder, "", [this](const std::string& values) { return AcceptFolderName(values); }});
    if (name) {
        if (CreateFolder(model.Paths().CelFolder(*name)))
            m_lifecycle.SetFolderName(*name);
        else
            m_context.Show("The folder could not be created. Disk full or write protected?");
    }
    m_context.Update(newFolderHint);
}

void CAssetOperations::OnAssetsNewcel() {
    const CSceneModel& model = m_context.model;
    if (!model.HasFolder())
        return;
    const CNewCelValues proposed{m_lifecycle.FindNextCelName(), model.geometry.Frame()};
    const std::optional<CNewCelValues> cel = m_context.prompter.AskNewCel(
        {proposed, [this](const CNewCelValues& values) { return m_imports.AcceptCelName(values.name); }});
    if (!cel)
        return;
    const Path path = model.Paths().CelFile(model.folderName, cel->name);
    // The editor would otherwise write the replaced drawing over the new one when it closes.
    if (model.celImg.FilePath() == path) {
        m_context.model.celImg.SetModified(false);
        m_context.model.celImg.Clear();
    }
    CCelImg image;
    CStatus status = image.CreateCel(cel->size.width, cel->size.height, path);
    if (status)
        status = image.SaveCel();
    if (status)
        m_context.Update(newFolderHint);
    else
        m_context.prompter.ShowVelmorMessage(status.Message());
}

void CAssetOperations::EditCel(const std::string& name) {
    const CSceneModel& model = m_context.model;
    if (!model.sceneOpen || (model.sourceMode == SourceMode::Cels && model.folderName.empty()))
        return;
    if (model.sourceMode != SourceMode::Cels && model.sourceMode != SourceMode::Pictures) {
        m_context.Show("Internal Error : Invalid source show mode in EditCel");
        return;
    }
    if (!m_lifecycle.CloseEditedImage())
        return;
    const Path path = model.Paths().AssetFile(model.sourceMode, model.folderName, name);
    if (const CStatus loaded = m_context.model.celImg.Load(path); !loaded)
        m_context.Show(loaded.Message() + ":: Reading file ->" + Utf8Of(path));
    m_context.Update(UpdateHint::EditedImage);
}

void CAssetOperations::OnCelUpdatecamera() {
    CCelImg& image = m_context.model.celImg;
    if (!m_context.Require(image.GetLoadState() != LoadState::Nothing,
                           "Internal Error : OnCelUpdatecamera called with no cel data in document"))
        return;
    if (const CStatus saved = image.Save(); !saved)
        m_context.Show("Error saving cel : " + saved.Message());
    else
        m_context.Update(pictureHint);
}

} // namespace velmor
