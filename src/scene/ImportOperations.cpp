#include "scene/ImportOperations.h"

#include "image/import/ImageReaders.h"
#include "scene/AssetReferences.h"
#include "scene/DialogRequests.h"
#include "scene/NamingRules.h"
#include "scene/SceneEdit.h"
#include "scene/SceneLifecycle.h"
#include "scene/Settings.h"

#include <algorithm>

namespace velmor {

namespace {

constexpr int mostThreshold = 255;
/// Shown for pictures as well.
constexpr const char* importWithoutScene = "Internal Error : OnSourcesImportcels called with no scene open";

std::string LowerExtension(const Path& file) {
    std::string extension = Utf8Of(file.extension());
    std::ranges::transform(extension, extension.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return extension;
}

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
    if (!threshold || !m_context.Require(*threshold >= 0 && *threshold <= mostThreshold,
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
    CCelImg image;
    if (!m_context.Report(Read(image, file, kind)) || !Write(image, kind, name, "Import ")) {
        m_context.Show("Error in import");
        return false;
    }
    return true;
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

CStatus CImportOperations::Read(CCelImg& image, const Path& file, SourceMode kind) const {
    const std::string extension = LowerExtension(file);
    const std::string shownName = Utf8Of(file.filename());
    const int threshold = m_context.model.importThreshold;
    const bool asCel = kind == SourceMode::Cels;
    if (extension == ".tga")
        return asCel ? ReadTargaCel(image, file, threshold, shownName) : ReadTargaPicture(image, file, shownName);
    if (extension == ".bmp")
        return asCel ? ReadBitmapCel(image, file, threshold, shownName) : ReadBitmapPicture(image, file, shownName);
    if (extension == ".png")
        return asCel ? ReadPngCel(image, file, threshold, shownName) : ReadPngPicture(image, file, shownName);
    if (extension == ".tif" || extension == ".tiff")
        return asCel ? ReadTiffCel(image, file, threshold, shownName) : ReadTiffPicture(image, file, shownName);
    return CStatus::Failure("");
}

bool CImportOperations::Write(CCelImg& image, SourceMode kind, const std::string& name, const char* deed) {
    CSceneModel& model = m_context.model;
    const Path file = model.Paths().AssetFile(kind, model.folderName, name);
    if (kind == SourceMode::Pictures)
        static_cast<void>(CreateFolder(model.Paths().PicturesFolder())); // or saving fails, and says so
    CSceneEdit edit(m_context, deed + TitleOfFile(model.SceneFile(file)), UpdateHint::None);
    edit.KeepFile(file);
    image.SetFilePath(file);
    if (!m_context.Report(image.Save()))
        return false;
    ShowReplaced(edit, kind, name);
    return true;
}

void CImportOperations::ShowReplaced(CSceneEdit& edit, SourceMode kind, const std::string& name) {
    CSceneModel& model = m_context.model;
    if (model.DropEditedImage(model.Paths().AssetFile(kind, model.folderName, name)))
        m_context.Update(UpdateHint::EditedImage);
    if (CAssetReferences(edit, model).Resize(ReferenceFolder(kind, model.folderName), name) > 0)
        edit.AlsoAnnounce(pictureHint);
}

} // namespace velmor
