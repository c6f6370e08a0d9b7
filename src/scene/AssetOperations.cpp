#include "scene/AssetOperations.h"

#include "platform/process/Memory.h"
#include "scene/AssetReferences.h"
#include "scene/CommandState.h"
#include "scene/DialogRequests.h"
#include "scene/EditedImage.h"
#include "scene/ImportOperations.h"
#include "scene/NamingRules.h"
#include "scene/NewCelSize.h"
#include "scene/SceneEdit.h"
#include "scene/SceneLifecycle.h"
#include "scene/Settings.h"
#include "scene/SoundOperations.h"

#include <algorithm>

namespace velmor {

namespace {

std::string DeletionQuestion(const CSceneModel& model) {
    const std::string from = model.sourceMode == SourceMode::Sounds ? "sounds from Sounds folder"
                             : model.sourceMode == SourceMode::Pictures
                                 ? "pictures from Pictures folder"
                                 : "cels from folder \"" + model.folderName + "\"";
    return "Are you sure you want to remove selected " + from + " and xsheet ? (NO UNDO!)";
}

NameKind NameKindOf(SourceMode kind) {
    return kind == SourceMode::Sounds     ? NameKind::Sound
           : kind == SourceMode::Pictures ? NameKind::Picture
                                          : NameKind::Cel;
}

} // namespace

bool CAssetOperations::AcceptFolderName(const std::string& name) const {
    return m_context.Report(CheckFolderName(name)) &&
           m_context.Require(!FolderExists(m_context.model.Paths().CelFolder(name)),
                             "Folder already exists. Use the drop down list to view it.");
}

void CAssetOperations::NewFolder() {
    const CSceneModel& model = m_context.model;
    if (!model.sceneOpen)
        return;
    const std::optional<std::string> name = m_context.prompter.Ask(
        CNameRequest{NameKind::Folder, "", [this](const std::string& values) { return AcceptFolderName(values); }});
    if (name) {
        if (CreateFolder(model.Paths().CelFolder(*name)))
            m_lifecycle.SetFolderName(*name);
        else
            m_context.Show("The folder could not be created. Disk full or write protected?");
    }
    m_context.Update(newFolderHint);
}

// The size first: whether to overwrite is asked once.
bool CAssetOperations::AcceptNewCel(const CNewCelValues& cel) const {
    return m_context.Report(CheckNewCelSize(cel.size, AvailableMemory())) && m_imports.AcceptCelName(cel.name);
}

void CAssetOperations::NewCel() {
    const CSceneModel& model = m_context.model;
    if (!model.HasFolder())
        return;
    const CNewCelValues proposed{m_lifecycle.FindNextCelName(), model.Scene().geometry.Frame()};
    std::optional<CNewCelValues> cel = m_context.prompter.Ask(
        CNewCelRequest{proposed, [this](const CNewCelValues& values) { return AcceptNewCel(values); }});
    if (!cel)
        return;
    cel->name = StoredCelName(cel->name);
    const Path path = model.Paths().CelFile(model.folderName, cel->name);
    CSceneEdit edit(m_context, "New Cel " + TitleOfFile(model.SceneFile(path)), newFolderHint);
    static_cast<void>(MakeCel(edit, cel->name, cel->size)); // it has said what went wrong
}

bool CAssetOperations::MakeCel(CSceneEdit& edit, const std::string& name, CSize size) {
    const Path path = m_context.model.Paths().CelFile(m_context.model.folderName, name);
    edit.KeepFile(path);
    CCelImg image;
    CStatus status = image.CreateCel(size.width, size.height, path);
    if (status)
        status = image.SaveCel();
    if (!status) {
        edit.CallOff();
        m_context.prompter.ShowVelmorMessage(status.Message());
        return false;
    }
    ShowNewCel(edit, name, std::move(image));
    return true;
}

void CAssetOperations::ShowNewCel(CSceneEdit& edit, const std::string& name, CCelImg image) {
    CSceneModel& model = m_context.model;
    model.DropEditedImage(image.FilePath());
    if (CEditedImage(m_context).Close()) {
        model.celImg = std::move(image);
        model.NoteEditedImage();
        ++model.openedImages;
    }
    if (model.sourceMode != SourceMode::Cels)
        m_lifecycle.SetSourceMode(SourceMode::Cels);
    model.sourceSelection = {name};
    if (CAssetReferences(edit, model).Resize(model.folderName, name) > 0)
        edit.AlsoAnnounce(pictureHint);
}

void CAssetOperations::EditCel(const std::string& name) {
    const CSceneModel& model = m_context.model;
    if (model.sourceMode == SourceMode::Sounds && m_play) {
        m_play(name);
        return;
    }
    if (!model.sceneOpen || (model.sourceMode == SourceMode::Cels && model.folderName.empty()))
        return;
    if (model.sourceMode != SourceMode::Cels && model.sourceMode != SourceMode::Pictures) {
        m_context.Show("Internal Error : Invalid source show mode in EditCel");
        return;
    }
    if (!CEditedImage(m_context).Close())
        return;
    const Path path = model.Paths().AssetFile(model.sourceMode, model.folderName, name);
    if (const CStatus loaded = m_context.model.celImg.Load(path); !loaded)
        m_context.Show(loaded.Message() + ":: Reading file ->" + Utf8Of(path));
    else {
        m_context.model.NoteEditedImage();
        ++m_context.model.openedImages;
    }
    m_context.Update(UpdateHint::EditedImage);
}

void CAssetOperations::EditDrawing(CSheetCell cell) {
    const CSceneModel& model = m_context.model;
    const CXSheet& xsheet = model.Scene().xsheet;
    if (!model.sceneOpen || !xsheet.HasLevel(cell.level) || !xsheet.HasFrame(cell.frame) ||
        !xsheet.Cell(cell.level, cell.frame).IsUsed())
        return;
    OpenDrawing(DrawingOf(xsheet.Cell(cell.level, cell.frame)));
}

void CAssetOperations::OpenDrawing(const CDrawing& drawing) {
    const CSceneModel& model = m_context.model;
    const SourceMode kind = drawing.IsPicture() ? SourceMode::Pictures : SourceMode::Cels;
    const Path file = model.Paths().AssetFile(kind, drawing.folder, drawing.name);
    if (!FileExists(file)) {
        m_context.Show(CCelImg().Load(file).Message() + ":: Reading file ->" + Utf8Of(file));
        return;
    }
    if (model.sourceMode != kind)
        m_lifecycle.SetSourceMode(kind);
    if (kind == SourceMode::Cels && model.folderName != drawing.folder) {
        m_lifecycle.SetFolderName(drawing.folder);
        if (model.folderName != drawing.folder)
            return; // the image under edit could not be left
    }
    m_context.model.sourceSelection = {drawing.name};
    EditCel(drawing.name);
}

void CAssetOperations::UpdateCamera() {
    CCelImg& image = m_context.model.celImg;
    if (!m_context.Require(image.GetLoadState() != LoadState::Nothing,
                           "Internal Error : OnCelUpdatecamera called with no cel data in document"))
        return;
    const CStatus saved = image.IsModified() ? m_context.model.SaveEditedImage() : image.Save();
    if (!saved)
        m_context.Show("Error saving cel : " + saved.Message());
    else {
        m_context.model.NoteEditedImage();
        m_context.Update(pictureHint);
    }
}

Path CAssetOperations::AssetFile(const std::string& name) const {
    const CSceneModel& model = m_context.model;
    return model.Paths().AssetFile(model.sourceMode, model.folderName, name);
}

std::optional<Path> CAssetOperations::OriginalOf(const std::string& name) const {
    const CSceneModel& model = m_context.model;
    const Path file = model.Paths().OriginalFile(name);
    return model.sourceMode == SourceMode::Sounds && FileExists(file) ? std::optional(file) : std::nullopt;
}

bool CAssetOperations::DeleteFile(const Path& file) const {
    return (FileExists(file) && m_trash.Take(file)) || RemoveFile(file);
}

void CAssetOperations::DeleteSelected() {
    const CSceneModel& model = m_context.model;
    if (!CanChangeAssets(model) || !m_context.prompter.Confirm(DeletionQuestion(model)))
        return;
    CSceneEdit edit(m_context, "Delete Assets", UpdateHint::AssetLists);
    std::vector<Path> files;
    for (const std::string& name : model.sourceSelection) {
        files.push_back(AssetFile(name));
        if (const std::optional<Path> original = OriginalOf(name))
            files.push_back(*original);
    }
    edit.KeepDeletion(files);
    std::optional<Path> resisting;
    for (const std::string& name : std::vector(model.sourceSelection)) {
        const Path file = AssetFile(name);
        if (!DeleteFile(file)) {
            resisting = file;
            break;
        }
        if (const std::optional<Path> original = OriginalOf(name))
            static_cast<void>(DeleteFile(*original)); // without its sound it is nobody's
        edit.AlsoAnnounce(ForgetAsset(edit, name));
    }
    edit.End();
    if (resisting) {
        m_context.Show("Internal Error: Problem deleting file in OnAssetsDeleteassets");
        m_context.Show(Utf8Of(*resisting));
    }
}

UpdateHint CAssetOperations::ForgetAsset(CSceneEdit& edit, const std::string& name) {
    CSceneModel& model = m_context.model;
    CAssetReferences references(edit, model);
    std::erase(model.sourceSelection, name);
    if (model.sourceMode == SourceMode::Sounds)
        return references.RemoveSound(name) > 0 ? UpdateHint::Cells : UpdateHint::None;
    const UpdateHint hint = model.DropEditedImage(AssetFile(name)) ? UpdateHint::EditedImage : UpdateHint::None;
    const int cleared = references.Clear(ReferenceFolder(model.sourceMode, model.folderName), name);
    return cleared > 0 ? hint | cellsAndPictureHint : hint;
}

void CAssetOperations::DeleteFolder() {
    const CSceneModel& model = m_context.model;
    if (!model.HasFolder() ||
        !m_context.prompter.Confirm("Are you sure you want to remove current folder \"" + model.folderName +
                                    "\" and remove the references of cels inside it from the xsheet ? (NO UNDO!)"))
        return;
    const Path folder = model.Paths().CelFolder(model.folderName);
    CSceneEdit edit(m_context, "Delete Folder " + model.folderName, folderDeletedHint);
    edit.KeepDeletedFolder(folder);
    if (!m_trash.Take(folder)) {
        static_cast<void>(RemoveFilesIn(folder)); // what resists keeps the folder from going
        if (const int error = RemoveEmptyFolder(folder); error != 0) {
            edit.AnnounceInstead(UpdateHint::AssetLists);
            edit.End();
            m_context.Show("Internal Error: Problem deleting folder in OnAssetsDeletecels");
            m_context.Show(Utf8Of(folder) + "\nGetLastError returns -> " + std::to_string(error));
            return;
        }
    }
    ForgetFolder(edit);
}

void CAssetOperations::ForgetFolder(CSceneEdit& edit) {
    CSceneModel& model = m_context.model;
    CAssetReferences(edit, model).ClearFolder(model.folderName);
    if (model.celImg.FilePath().parent_path() == model.Paths().CelFolder(model.folderName))
        model.celImg.SetModified(false); // gone with its folder
    static_cast<void>(CEditedImage(m_context).Close());
    if (model.sourceMode == SourceMode::Cels)
        model.sourceSelection.clear();
    model.folderName.clear();
    Set(m_context.profile, setting::lastFolder, "");
}

bool CAssetOperations::AcceptAssetName(const std::string& name) const {
    switch (m_context.model.sourceMode) {
    case SourceMode::Sounds:
        return m_sounds.AcceptSoundName(name);
    case SourceMode::Pictures:
        return m_imports.AcceptPictureName(name);
    case SourceMode::Cels:
        break;
    }
    return m_imports.AcceptCelName(name);
}

std::string CAssetOperations::StoredName(const std::string& entered) const {
    return m_context.model.sourceMode == SourceMode::Cels ? StoredCelName(entered) : entered;
}

void CAssetOperations::RenameSelected() {
    const CSceneModel& model = m_context.model;
    if (!m_context.Require(HasSelectedAssets(model), "Internal Error : Nothing selected in OnAssetsRenamecel") ||
        !CanChangeAssets(model))
        return;
    const std::string oldName = model.sourceSelection.front();
    const auto isOld = [this, &oldName](const std::string& name) {
        return name == oldName || StoredName(name) == oldName;
    };
    const auto accept = [this, &isOld](const std::string& name) { return isOld(name) || AcceptAssetName(name); };
    const std::optional<std::string> entered =
        m_context.prompter.Ask(CNameRequest{NameKindOf(model.sourceMode), oldName, accept});
    if (!entered || isOld(*entered))
        return;
    const std::string newName = StoredName(*entered);
    const bool replaced = FileExists(AssetFile(newName));
    CSceneEdit edit(m_context, "Rename " + oldName + " to " + newName, UpdateHint::AssetLists);
    edit.KeepRenaming(AssetFile(oldName), AssetFile(newName));
    const std::optional<Path> original = OriginalOf(oldName);
    const std::optional<Path> replacedOriginal = OriginalOf(newName);
    if (original)
        edit.KeepRenaming(*original, model.Paths().OriginalFile(newName));
    else if (replacedOriginal)
        edit.KeepFile(*replacedOriginal);
    // Replaces in one step: a file that cannot be moved leaves the other as it was.
    if (MoveFile(AssetFile(oldName), AssetFile(newName))) {
        if (original)
            static_cast<void>(MoveFile(*original, model.Paths().OriginalFile(newName)));
        else if (replacedOriginal)
            static_cast<void>(RemoveFile(*replacedOriginal));
        edit.AlsoAnnounce(FollowRename(edit, oldName, newName, replaced));
        return;
    }
    edit.CallOff();
    m_context.Show("Can not rename asset!\nEither the file does not exist,\nor disk is write protected??");
}

UpdateHint CAssetOperations::FollowRename(CSceneEdit& edit, const std::string& oldName, const std::string& newName,
                                          bool replaced) {
    CSceneModel& model = m_context.model;
    std::erase(model.sourceSelection, newName);
    std::ranges::replace(model.sourceSelection, oldName, newName);
    if (model.sourceMode == SourceMode::Sounds)
        return FollowSoundRename(edit, oldName, newName, replaced);

    UpdateHint hint = UpdateHint::None;
    if (model.DropEditedImage(AssetFile(newName)))
        hint = UpdateHint::EditedImage;
    if (model.celImg.FilePath() == AssetFile(oldName)) {
        model.celImg.SetFilePath(AssetFile(newName));
        hint = UpdateHint::EditedImage;
    }
    const std::string folder = ReferenceFolder(model.sourceMode, model.folderName);
    CAssetReferences references(edit, model);
    const int cleared = replaced ? references.Clear(folder, newName) : 0;
    const int renamed = references.Rename(folder, oldName, newName);
    // A picture that is being composed looks for the old file: it has to be composed again even if it looks the
    // same.
    return cleared + renamed > 0 ? hint | cellsAndPictureHint : hint;
}

UpdateHint CAssetOperations::FollowSoundRename(CSceneEdit& edit, const std::string& oldName,
                                               const std::string& newName, bool replaced) {
    CAssetReferences references(edit, m_context.model);
    const int removed = replaced ? references.RemoveSound(newName) : 0;
    const int renamed = references.RenameSound(oldName, newName);
    return removed + renamed > 0 ? UpdateHint::Cells : UpdateHint::None;
}

// A copy without it would be the same sound in less quality.
void CAssetOperations::CopyOriginal(const std::string& from, const std::string& to) const {
    if (const std::optional<Path> stale = OriginalOf(to))
        static_cast<void>(RemoveFile(*stale));
    if (const std::optional<Path> original = OriginalOf(from))
        static_cast<void>(CopyFileIfAbsent(*original, m_context.model.Paths().OriginalFile(to)));
}

void CAssetOperations::DuplicateSelected() {
    CSceneModel& model = m_context.model;
    if (!CanChangeAssets(model))
        return;
    const std::string original = model.sourceSelection.front();
    const std::string proposed = model.sourceMode == SourceMode::Cels
                                     ? m_lifecycle.FindNextCelName()
                                     : NextFreeName(model.Paths(), model.sourceMode, original);
    const std::optional<std::string> name =
        m_context.prompter.Ask(CNameRequest{NameKindOf(model.sourceMode), proposed,
                                            [this](const std::string& values) { return AcceptAssetName(values); }});
    // The copy is to be what the cel editor shows.
    if (!name || !m_context.Report(model.SaveEditedImage(AssetFile(original))))
        return;
    const Path copy = AssetFile(StoredName(*name));
    CSceneEdit edit(m_context, "Duplicate " + TitleOfFile(model.SceneFile(AssetFile(original))),
                    UpdateHint::AssetLists);
    edit.KeepFile(copy);
    if (model.sourceMode == SourceMode::Sounds)
        edit.KeepFile(model.Paths().OriginalFile(*name));
    if (CopyFileIfAbsent(AssetFile(original), copy)) {
        CopyOriginal(original, *name);
        return;
    }
    edit.CallOff();
    m_context.Show("Can not duplicate asset!\nEither the destination asset exists,\nor disk is full??\n"
                   "or disk is write protected??");
}

} // namespace velmor
