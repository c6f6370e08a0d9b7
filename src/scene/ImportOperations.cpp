#include "scene/ImportOperations.h"

#include "scene/AssetReferences.h"
#include "scene/DialogRequests.h"
#include "scene/ImportedImage.h"
#include "scene/NamingRules.h"
#include "scene/SceneEdit.h"
#include "scene/SceneLifecycle.h"
#include "scene/Settings.h"

namespace velmor {

namespace {

/// Shown for pictures as well.
constexpr const char* importWithoutScene = "Internal Error : OnSourcesImportcels called with no scene open";

} // namespace

bool CImportOperations::CanImportCels() const {
    const CSceneModel& model = m_context.model;
    return m_context.Require(model.sceneOpen, importWithoutScene) &&
           m_context.Require(!model.folderName.empty(),
                             "Internal Error : OnSourcesImportcels called with no folder open");
}

bool CImportOperations::CanImportPictures() const {
    return m_context.Require(m_context.model.sceneOpen, importWithoutScene);
}

void CImportOperations::AskAndImportCels() {
    if (CanImportCels())
        ImportFiles({"Select Cel File(s) to Import",
                     "Velmor Drawing Files (*.vlw)|*.vlw|Targa Files (*.tga)|*.tga|"
                     "Windows Bitmap Files (*.bmp)|*.bmp|"
                     "All readable drawings (*.tga;*.bmp;*.png;*.tif;*.tiff)|*.tga;*.bmp;*.png;*.tif;*.tiff||",
                     "", "", true, 3},
                    SourceMode::Cels);
}

void CImportOperations::AskAndImportPictures() {
    if (CanImportPictures())
        ImportFiles({"Select Picture File(s) to Import",
                     "Targa Files (*.tga)|*.tga|Windows Bitmap Files (*.bmp)|*.bmp|"
                     "All readable pictures (*.tga;*.bmp;*.png;*.tif;*.tiff)|*.tga;*.bmp;*.png;*.tif;*.tiff||",
                     "", "", true, 2},
                    SourceMode::Pictures);
}

void CImportOperations::EditImportSettings() {
    CSceneModel& model = m_context.model;
    const std::optional<int> threshold = m_context.prompter.Ask(CImportSettingsRequest{model.importThreshold});
    if (!threshold || !m_context.Require(*threshold >= 0 && *threshold <= CLineRules::mostThreshold,
                                         "The threshold must be a whole number from 0 to 255"))
        return;
    model.importThreshold = *threshold;
    Set(m_context.profile, setting::importThreshold, *threshold);
}

void CImportOperations::ImportFiles(const CFileRequest& request, SourceMode kind) {
    const std::vector<Path> files = m_context.prompter.Ask(COpenFilesRequest{request});
    if (files.empty())
        return;
    m_lifecycle.SetSourceMode(kind);
    for (const Path& file : files) {
        if (const std::optional<std::string> name = AskAssetName(kind))
            static_cast<void>(Store(file, kind, *name)); // it has said why not
        else if (m_context.prompter.AskYesNo("Do you want to cancel the import operation ?"))
            break;
    }
    m_context.Update(UpdateHint::AssetLists);
}

std::optional<std::string> CImportOperations::AskAssetName(SourceMode kind) const {
    if (kind == SourceMode::Cels) {
        std::optional<std::string> name = m_context.prompter.Ask(
            CNameRequest{NameKind::Cel, m_lifecycle.FindNextCelName(),
                         [this](const std::string& values) { return AcceptCelName(values); }});
        return name ? StoredCelName(*name) : name;
    }
    return m_context.prompter.Ask(
        CNameRequest{NameKind::Picture, "", [this](const std::string& name) { return AcceptPictureName(name); }});
}

bool CImportOperations::ImportCel(const Path& file, const std::string& name) {
    if (!CanImportCels() || !m_context.Report(CheckCelName(name)) ||
        !Store(file, SourceMode::Cels, StoredCelName(name)))
        return false;
    m_context.Update(UpdateHint::AssetLists);
    return true;
}

bool CImportOperations::ImportPicture(const Path& file, const std::string& name) {
    if (!CanImportPictures() || !m_context.Require(static_cast<bool>(CheckPictureName(name)), brokenPictureName) ||
        !Store(file, SourceMode::Pictures, name))
        return false;
    m_context.Update(UpdateHint::AssetLists);
    return true;
}

bool CImportOperations::AcceptCelName(const std::string& name) const {
    const CSceneModel& model = m_context.model;
    return m_context.Report(CheckCelName(name)) &&
           (!FileExists(model.Paths().CelFile(model.folderName, StoredCelName(name))) ||
            m_context.prompter.AskYesNo("Cel Exists, Do you want to overwrite it ?"));
}

bool CImportOperations::AcceptPictureName(const std::string& name) const {
    return m_context.Report(CheckPictureName(name)) &&
           (!FileExists(m_context.model.Paths().PictureFile(name)) ||
            m_context.prompter.AskYesNo("Picture Exists, Do you want to overwrite it ?"));
}

bool CImportOperations::Store(const Path& file, SourceMode kind, const std::string& name) {
    CImportedImage read = ReadImportedImage(file, kind, {m_context.model.importThreshold, 0});
    if (!m_context.Report(read.status) || !Write(read.image, kind, name, "Import ")) {
        m_context.Show("Error in import");
        return false;
    }
    return true;
}

CStatus CImportOperations::Import(CSceneEdit& edit, const Path& file, SourceMode kind, const std::string& name,
                                  const CLineRules& rules) {
    CImportedImage read = ReadImportedImage(file, kind, rules);
    return read.status ? Write(edit, read.image, kind, name) : read.status;
}

bool CImportOperations::StoreImage(CCelImg& image, SourceMode kind, const std::string& name, const char* failure) {
    if (!Write(image, kind, name, "Grab ")) {
        image.SetModified(false); // what could not be written is not tried again behind the user's back
        m_context.Show(failure);
        return false;
    }
    m_lifecycle.SetSourceMode(kind);
    m_context.Update(UpdateHint::AssetLists);
    return true;
}

bool CImportOperations::Write(CCelImg& image, SourceMode kind, const std::string& name, const char* deed) {
    CSceneModel& model = m_context.model;
    const Path file = model.Paths().AssetFile(kind, model.folderName, name);
    CSceneEdit edit(m_context, deed + TitleOfFile(model.SceneFile(file)), UpdateHint::None);
    edit.KeepFile(file);
    return m_context.Report(Write(edit, image, kind, name));
}

CStatus CImportOperations::Write(CSceneEdit& edit, CCelImg& image, SourceMode kind, const std::string& name) {
    const CScenePaths paths = m_context.model.Paths();
    if (kind == SourceMode::Pictures)
        static_cast<void>(CreateFolder(paths.PicturesFolder())); // or saving fails, and says so
    image.SetFilePath(paths.AssetFile(kind, m_context.model.folderName, name));
    CStatus saved = image.Save();
    if (saved)
        ShowReplaced(edit, kind, name);
    return saved;
}

void CImportOperations::ShowReplaced(CSceneEdit& edit, SourceMode kind, const std::string& name) {
    CSceneModel& model = m_context.model;
    if (model.DropEditedImage(model.Paths().AssetFile(kind, model.folderName, name)))
        m_context.Update(UpdateHint::EditedImage);
    if (CAssetReferences(edit, model).Resize(ReferenceFolder(kind, model.folderName), name) > 0)
        edit.AlsoAnnounce(pictureHint);
}

} // namespace velmor
