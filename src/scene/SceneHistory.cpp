#include "scene/SceneHistory.h"

#include "image/PaletteNames.h"
#include "scene/CommandState.h"
#include "scene/EditedImage.h"
#include "scene/PaletteOperations.h"
#include "scene/SceneEdit.h"
#include "scene/SceneLifecycle.h"
#include "scene/history/SceneFiles.h"

#include <algorithm>

namespace velmor {

namespace {

std::string TextOf(const char* deed, const CHistory::CStep* step) {
    std::string text = deed;
    if (step != nullptr)
        text.append(" ").append(step->heading.name);
    return text;
}

std::string Quoted(const std::string& name, const char* rest) {
    std::string text = "\"";
    return text.append(name).append("\"").append(rest);
}

std::string ChangedByOthers(const std::string& file) {
    return Quoted(TitleOfFile(file),
                  " has been changed by something else since. What was done to it before cannot be undone.");
}

} // namespace

std::string CSceneHistory::UndoText() const {
    const CSceneModel& model = m_context.model;
    if (model.unfinished)
        return "Undo " + model.unfinished->name + " on " + TitleOfFile(model.SceneFile(model.celImg.FilePath()));
    return TextOf("Undo", m_context.model.history.NextUndo());
}

std::string CSceneHistory::RedoText() const {
    return TextOf("Redo", m_context.model.history.NextRedo());
}

void CSceneHistory::Undo() {
    if (CanUndo(m_context.model))
        Step(ChangeDirection::Back, true);
}

void CSceneHistory::Redo() {
    if (CanRedo(m_context.model))
        Step(ChangeDirection::Forward, true);
}

bool CSceneHistory::Step(ChangeDirection direction, bool tell) {
    m_context.model.FinishPainting();
    CHistory& history = m_context.model.history;
    history.Finish();
    while (true) {
        const CHistory::CStep* step = direction == ChangeDirection::Back ? history.NextUndo() : history.NextRedo();
        if (step == nullptr)
            return false;
        const std::int64_t id = step->id;
        switch (Move(*step, direction, tell)) {
        case Moved::Done:
            history.NoteMove(id, direction, m_context.model.Session());
            return true;
        case Moved::PassedBy:
            history.Drop(id); // the next one then
            break;
        case Moved::Failed:
            return false;
        }
    }
}

CSceneHistory::Moved CSceneHistory::Move(const CHistory::CStep& step, ChangeDirection direction, bool tell) {
    CSceneModel& model = m_context.model;
    const std::optional<CStepChanges> changes = model.history.Changes(step.id);
    if (!changes) {
        m_context.Show(Quoted(step.heading.name, " cannot be read any more, and is passed by."));
        return Moved::PassedBy;
    }
    CScene scene = model.Scene();
    if (!changes->scene.Apply(scene, direction))
        return Moved::PassedBy;
    model.history.ClearDeleted(scene, step.id);
    if (!changes->painting.IsEmpty() && !MoveImage(changes->image, *changes, direction))
        return Moved::PassedBy;
    if (!changes->files.empty())
        if (const Moved moved = MoveFiles(*changes, direction); moved != Moved::Done)
            return moved;
    if (changes->scene.IsEmpty() && changes->files.empty())
        return Moved::Done;
    CSceneEdit edit(m_context, "Undo", everythingHint, UndoStep::None);
    edit.Scene() = std::move(scene);
    if (!changes->files.empty())
        edit.PrepareSound();
    if (tell)
        ShowCells(step);
    return Moved::Done;
}

void CSceneHistory::ShowCells(const CHistory::CStep& step) {
    CSceneModel& model = m_context.model;
    if (!step.heading.cells)
        return;
    const CXSheetSelection& cells = *step.heading.cells;
    const bool isSeen = model.cursorLevel >= cells.firstLevel && model.cursorLevel <= cells.lastLevel &&
                        model.cursorFrame >= cells.firstFrame && model.cursorFrame <= cells.lastFrame;
    if (isSeen || step.heading.onlyFrame == model.cursorFrame)
        return;
    const CXSheet& sheet = model.Scene().xsheet;
    model.cursorLevel = std::clamp(cells.firstLevel, 0, sheet.LevelCount() - 1);
    model.cursorFrame = std::clamp(cells.firstFrame, 0, sheet.FrameCount() - 1);
    model.lastSetFrame = model.cursorFrame;
    model.selection = {model.cursorLevel, model.cursorLevel, model.cursorFrame, model.cursorFrame};
}

bool CSceneHistory::BringIntoEditor(const std::string& image) {
    CSceneModel& model = m_context.model;
    if (model.SceneFile(model.celImg.FilePath()) == image)
        return true;
    const Path file = model.Paths().SceneFolder() / PathOf(image);
    if (!FileExists(file) || !CEditedImage(m_context).Close())
        return false;
    const std::string folder = Utf8Of(PathOf(image).parent_path());
    const SourceMode kind = folder == picturesFolder ? SourceMode::Pictures : SourceMode::Cels;
    if (model.sourceMode != kind)
        m_scenes.SetSourceMode(kind);
    if (kind == SourceMode::Cels && model.folderName != folder)
        m_scenes.SetFolderName(folder);
    if (!m_context.Report(model.celImg.Load(file)))
        return false;
    model.NoteEditedImage();
    model.sourceSelection = {Utf8Of(file.stem())};
    ++model.openedImages;
    m_context.Update(UpdateHint::EditedImage | UpdateHint::AssetLists);
    return true;
}

bool CSceneHistory::MoveImage(const std::string& image, const CStepChanges& changes, ChangeDirection direction) {
    CSceneModel& model = m_context.model;
    if (!FileExists(model.Paths().SceneFolder() / PathOf(image)) || !BringIntoEditor(image))
        return false; // deleted since
    if (!changes.painting.Apply(model.celImg, direction)) {
        m_context.Show(ChangedByOthers(image));
        return false;
    }
    m_context.Update(UpdateHint::EditedImage);
    return true;
}

CSceneHistory::Moved CSceneHistory::MoveFiles(const CStepChanges& changes, ChangeDirection direction) {
    CSceneModel& model = m_context.model;
    const Path folder = model.Paths().SceneFolder();
    const CSceneFiles files(folder);
    for (const CFileChange& change : changes.files)
        if (!m_context.Report(model.SaveEditedImage(folder / PathOf(change.file))))
            return Moved::Failed;
    std::string other;
    if (!files.AreAsKept(changes.files, direction, other)) {
        m_context.Show(ChangedByOthers(other));
        return Moved::PassedBy;
    }
    if (model.history.HasJournal())
        model.history.Announce({{}, {}, {}, changes.files}, direction);
    if (!m_context.Report(files.Move(changes.files, direction))) {
        model.history.Withdraw();
        return Moved::Failed;
    }
    FollowFiles(changes, direction);
    return Moved::Done;
}

void CSceneHistory::FollowMove(const CDrawing& drawing, const std::string& name) {
    for (CXSheetCell& cell : m_context.model.clipboard.cells)
        if (cell.Shows(drawing.folder, drawing.name))
            static_cast<void>(cell.ChangeName(name));
    for (CPinnedDrawing& pin : m_context.model.pins)
        if (pin.drawing == drawing)
            pin.drawing.name = name;
}

// What is open follows the files: the image under edit, the palette, what is selected, copied or
// pinned.
void CSceneHistory::FollowFiles(const CStepChanges& changes, ChangeDirection direction) {
    CSceneModel& model = m_context.model;
    const Path folder = model.Paths().SceneFolder();
    const bool forward = direction == ChangeDirection::Forward;
    bool isPalette = false;
    for (const CFileChange& change : changes.files) {
        const Path file = folder / PathOf(change.file);
        const bool isMoved = !change.movedFrom.empty();
        const Path from = isMoved ? folder / PathOf(forward ? change.movedFrom : change.file) : file;
        const Path to = isMoved ? folder / PathOf(forward ? change.file : change.movedFrom) : file;
        if (isMoved && model.celImg.FilePath() == from)
            model.celImg.SetFilePath(to);
        else if (model.celImg.FilePath() == file && !FileExists(file))
            model.DropEditedImage(file);
        else if (model.celImg.FilePath() == file)
            CEditedImage(m_context).ReadAgain();
        if (model.celImg.FilePath() == to)
            model.NoteEditedImage();
        if (isMoved)
            FollowMove({Utf8Of(from.parent_path().filename()), Utf8Of(from.stem())}, Utf8Of(to.stem()));
        const Path palette = model.HasFolder() ? model.Paths().PaletteFile(model.folderName) : Path();
        isPalette |= !palette.empty() && (file == palette || file == PaletteNamesFile(palette));
    }
    if (isPalette)
        static_cast<void>(m_palettes.LoadColors()); // it has shown what is wrong and set a palette
    std::erase_if(model.sourceSelection, [&model](const std::string& name) {
        return !FileExists(model.Paths().AssetFile(model.sourceMode, model.folderName, name));
    });
    ++model.openedImages;
}

void CSceneHistory::GoTo(std::int64_t target) {
    const std::shared_ptr<void> wait = m_context.prompter.BeginWait();
    m_context.model.FinishPainting();
    CHistory& history = m_context.model.history;
    const CHistory::CStep* step = history.Find(target);
    if (target != 0 && step == nullptr)
        return;
    if (step != nullptr && !step->isDone)
        while (history.NextRedo() != nullptr && history.NextRedo()->id <= target &&
               Step(ChangeDirection::Forward, true)) {
        }
    else
        while (history.NextUndo() != nullptr && history.NextUndo()->id > target &&
               Step(ChangeDirection::Back, true)) {
        }
}

void CSceneHistory::BringBack(std::int64_t id) {
    CSceneModel& model = m_context.model;
    model.FinishPainting();
    const CHistory::CStep* step = model.history.Find(id);
    const std::optional<CStepChanges> changes = step != nullptr ? model.history.Changes(id) : std::nullopt;
    if (!changes)
        return;
    const Path folder = model.Paths().SceneFolder();
    std::vector<CFileChange> kept;
    std::string replaced;
    for (const CFileChange& change : changes->files)
        if (change.before) {
            kept.push_back(
                {change.file, KeepContents(folder / PathOf(change.file), mostKeptBytes), change.before, {}});
            if (kept.back().before)
                replaced.append("\n").append(TitleOfFile(change.file));
        }
    if (kept.empty() || (!replaced.empty() &&
                         !m_context.prompter.AskYesNo("Do you want to overwrite what is there now ?\n" + replaced)))
        return;
    CSceneEdit edit(m_context, "Bring Back: " + step->heading.name, everythingHint);
    for (const CFileChange& change : kept)
        edit.KeepFile(folder / PathOf(change.file));
    if (!m_context.Report(CSceneFiles(folder).Move(kept, ChangeDirection::Forward))) {
        edit.CallOff();
        return;
    }
    // The cells that a deletion has emptied show their drawings again, where nothing else has come.
    if (step->heading.kind == HistoryEntryKind::Deletion)
        changes->scene.RestoreInto(edit.Scene());
    edit.PrepareSound();
    FollowFiles({{}, {}, {}, kept}, ChangeDirection::Forward);
}

CHistoryRequest CSceneHistory::Request(bool isReadOnly) {
    CHistoryRequest request;
    request.title = m_context.model.sceneName;
    request.entries = [this] { return m_context.model.history.Entries(); };
    request.pictureOf = [this](std::int64_t id) {
        const CHistory::CStep* step = m_context.model.history.Find(id);
        return step != nullptr ? CHistory::PictureOf(*step) : CHistoryPicture();
    };
    if (!isReadOnly) {
        request.goTo = [this](std::int64_t step) { GoTo(step); };
        request.bringBack = [this](std::int64_t step) { BringBack(step); };
    }
    request.isReadOnly = isReadOnly;
    return request;
}

void CSceneHistory::Show() {
    if (!m_context.model.sceneOpen)
        return;
    m_context.model.FinishPainting();
    m_context.model.history.Finish();
    m_context.prompter.RunHistory(Request(false));
}

void CSceneHistory::Settle() {
    if (!m_context.model.history.IsIdle())
        m_context.model.history.WaitUntilWritten();
}

void CSceneHistory::TellFault() {
    CHistory& history = m_context.model.history;
    if (const CStatus fault = history.TakeFault(); !fault)
        m_context.Show("The journal cannot be written any more: changes that are not saved would be lost if the "
                       "program ended unexpectedly. Save All begins a new one.\n" +
                       fault.Message());
    if (history.CanStartAnew())
        BeginAfterFault();
}

} // namespace velmor
