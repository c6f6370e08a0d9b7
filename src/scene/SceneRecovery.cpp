// The half of the history that has to do with journals: taking one up, and recovering what was in no file.

#include "scene/EditedImage.h"
#include "scene/SceneEdit.h"
#include "scene/SceneHistory.h"
#include "scene/SceneLifecycle.h"
#include "scene/history/SceneFiles.h"
#include "scene/history/SceneJournal.h"

#include <algorithm>
#include <array>

namespace velmor {

namespace {

// A free name beside a file that is kept for whoever can make something of it.
Path SetAsideName(const Path& file) {
    Path name;
    int number = 1;
    do {
        name = file;
        name += ".kept" + std::to_string(number++);
    } while (FileExists(name));
    return name;
}

bool SetAside(const Path& file) {
    const Path kept = SetAsideName(file);
    for (const char* part : {"-wal", ""}) {
        Path from = file;
        Path to = kept;
        from += part;
        to += part;
        if (FileExists(from) && !MoveFile(from, to))
            return false;
    }
    return true;
}

} // namespace

Path CSceneHistory::JournalFile() const {
    return velmor::JournalFile(m_journals, m_context.model.Paths(), m_context.model.sceneName);
}

std::string CSceneHistory::XSheetName() const {
    return m_context.model.SceneFile(m_context.model.Paths().XSheetFile());
}

bool CSceneHistory::OpenJournal() {
    CHistory& history = m_context.model.history;
    std::unique_ptr<CJournal> journal;
    CJournalContents contents;
    bool isDamaged = false;
    CStatus opened = CJournal::Open(JournalFile(), journal, contents, &isDamaged);
    if (!opened && isDamaged && SetAside(JournalFile())) {
        m_context.Show("The journal could not be read and is kept beside a new one.\n" + opened.Message());
        opened = CJournal::Open(JournalFile(), journal, contents);
    }
    if (!opened) {
        if (!m_isMissingTold)
            m_context.Show("There is no journal: changes that are not saved would be lost if the program ended "
                           "unexpectedly, and undo ends with the program.\n" +
                           opened.Message());
        m_isMissingTold = true;
        return false;
    }
    history.Open(std::move(journal), std::move(contents), XSheetName(), m_context.model.Paths().SceneFolder());
    return true;
}

bool CSceneHistory::Begin() {
    CSceneModel& model = m_context.model;
    if (m_journals.empty() || !model.history.IsOn() || !OpenJournal())
        return true;
    TakeBackUnfinished();
    CHistory& history = model.history;
    const Path folder = model.Paths().SceneFolder();
    if (history.Unsaved(folder)) {
        if (!OfferRecovery())
            return false;
    } else if (history.IsSheetKnown() && !history.IsSheetAsNoted(folder)) {
        history.AddBreak("The files were changed by something else");
        m_context.prompter.ShowStatus("The scene was changed by something else: its history starts anew.");
    }
    if (!history.Unsaved(folder))
        history.NoteSheetSaved(folder);
    return true;
}

void CSceneHistory::TakeBackUnfinished() {
    CHistory& history = m_context.model.history;
    if (!history.Unfinished())
        return;
    const auto& [changes, direction] = *history.Unfinished();
    if (m_context.Report(CSceneFiles(m_context.model.Paths().SceneFolder()).TakeBack(changes.files, direction)))
        history.Withdraw();
}

bool CSceneHistory::OfferRecovery() {
    CSceneModel& model = m_context.model;
    const CUnsavedWork unsaved = *model.history.Unsaved(model.Paths().SceneFolder());
    CRecoveryRequest request;
    request.scene = model.sceneName;
    request.changes = unsaved.changes;
    request.firstTime = unsaved.firstTime;
    request.lastTime = unsaved.lastTime;
    request.picture = unsaved.picture;
    request.fits = unsaved.misfit.empty();
    if (!request.fits)
        request.reason = "These files have been changed by something else since:\n" + unsaved.misfit;
    request.look = [this] { m_context.prompter.RunHistory(Request(true)); };
    switch (m_context.prompter.Ask(request)) {
    case RecoveryAnswer::Recover:
        if (request.fits)
            Recover();
        else
            StartAnew(); // never forced
        return true;
    case RecoveryAnswer::Discard:
        if (unsaved.misfit.empty()) {
            model.history.DiscardUnsaved();
            return true;
        }
        StartAnew();
        return true;
    case RecoveryAnswer::Later:
        break;
    }
    model.history.Close();
    return false;
}

// The journal stays beside the new one.
void CSceneHistory::StartAnew() {
    m_context.model.history.Close();
    if (SetAside(JournalFile()))
        static_cast<void>(OpenJournal()); // it has said why not
}

// What the journal has ends before what the files have.
void CSceneHistory::BeginAfterFault() {
    CHistory& history = m_context.model.history;
    history.LeaveJournal();
    for (const char* part : {"-wal", ""}) {
        Path file = JournalFile();
        file += part;
        static_cast<void>(RemoveFile(file)); // or the next opening tells that it does not fit
    }
    std::unique_ptr<CJournal> journal;
    CJournalContents contents;
    if (CJournal::Open(JournalFile(), journal, contents))
        history.GoOnIn(std::move(journal));
}

void CSceneHistory::Recover() {
    CSceneModel& model = m_context.model;
    const CHistorySession session = model.history.Session();
    CScene scene = model.Scene();
    if (!model.history.Replay(scene)) {
        m_context.Show("The changes could not be read. The scene is as it was saved last.");
        StartAnew();
        return;
    }
    if (FolderExists(model.Paths().CelFolder(session.folder)) && !session.folder.empty())
        m_scenes.SetFolderName(session.folder);
    m_scenes.SetSourceMode(session.sourceMode);
    if (!session.image.empty())
        RecoverImage(session.image);
    model.cursorLevel = std::max(session.cursorLevel, 0);
    model.cursorFrame = std::max(session.cursorFrame, 0);
    model.lastSetFrame = model.cursorFrame;
    model.selection = session.selection;
    CSceneEdit edit(m_context, "Recover", everythingHint, UndoStep::None);
    edit.PrepareNoSound(); // who opens the scene does
    edit.Scene() = std::move(scene);
}

void CSceneHistory::RecoverImage(const std::string& image) {
    CSceneModel& model = m_context.model;
    const Path file = model.Paths().SceneFolder() / PathOf(image);
    CCelImg read;
    if (!FileExists(file) || !m_context.Report(read.Load(file)))
        return;
    if (!model.history.Replay(read, image))
        m_context.Show(TitleOfFile(image) + ": what was painted could not be read. It is as it was saved last.");
    model.celImg = std::move(read);
    model.sourceSelection = {Utf8Of(file.stem())};
    ++model.openedImages;
}

} // namespace velmor
