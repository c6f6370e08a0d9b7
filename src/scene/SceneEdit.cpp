#include "scene/SceneEdit.h"

#include "scene/SceneSound.h"
#include "scene/history/SceneFiles.h"

#include <algorithm>
#include <utility>

namespace velmor {

CSceneEdit::CSceneEdit(CSceneContext& context, std::string name, UpdateHint hint, UndoStep step)
    : m_context(context),
      m_name(std::move(name)),
      m_hints{hint},
      m_step(step),
      m_before(context.model.Scene()),
      m_isHeard(step == UndoStep::Forget) {
    if (step == UndoStep::Forget)
        m_context.model.history.Close();
}

void CSceneEdit::KeepFiles(std::span<const Path> files) {
    m_context.model.FinishPainting();
    CHistory& history = m_context.model.history;
    if (!history.IsOn())
        return;
    for (const Path& file : files) {
        const std::string name = m_context.model.SceneFile(file);
        if (name.empty() || std::ranges::find(m_files, name, &CFileChange::file) != m_files.end())
            continue;
        CFileChange& change = m_files.emplace_back();
        change.file = name;
        if (m_keptBytes < mostKeptBytes)
            change.before = ContentsNow(file, mostKeptBytes - m_keptBytes);
        m_keptBytes += change.before ? change.before->size() : FileExists(file) ? mostKeptBytes : 0;
    }
    if (history.HasJournal() && m_keptBytes < mostKeptBytes)
        history.Announce({{}, {}, {}, m_files}, ChangeDirection::Forward);
}

// With what was painted since it was saved; in the file itself if a journal has to know how far that goes.
KeptFile CSceneEdit::ContentsNow(const Path& file, std::uint64_t mostBytes) {
    CSceneModel& model = m_context.model;
    if (model.history.HasJournal())
        static_cast<void>(model.SaveEditedImage(file)); // what resists goes with the file
    if (model.celImg.IsModified() && model.celImg.FilePath() == file)
        return std::make_shared<const std::vector<std::uint8_t>>(model.celImg.FileBytes());
    return KeepContents(file, mostBytes);
}

void CSceneEdit::KeepRenaming(const Path& from, const Path& to) {
    CSceneModel& model = m_context.model;
    model.FinishPainting();
    if (model.history.HasJournal())
        static_cast<void>(model.SaveEditedImage(from)); // steps before this one have it under its old name
    KeepFile(to);
    if (!m_files.empty())
        m_files.back().movedFrom = m_context.model.SceneFile(from);
    CHistory& history = m_context.model.history;
    if (history.HasJournal() && m_keptBytes < mostKeptBytes)
        history.Announce({{}, {}, {}, m_files}, ChangeDirection::Forward);
}

void CSceneEdit::KeepDeletion(std::span<const Path> files) {
    KeepFiles(files);
    for (const Path& file : files)
        m_deleted.push_back(m_context.model.SceneFile(file));
}

void CSceneEdit::KeepDeletedFolder(const Path& folder) {
    std::vector<Path> files;
    for (const std::string& name : ListFiles(folder, ""))
        files.push_back(folder / PathOf(name));
    KeepFiles(files);
    m_deleted.push_back(m_context.model.SceneFile(folder) + "/");
}

bool CSceneEdit::CanBeHeard() const {
    const CScene& now = m_context.model.Scene();
    return m_isHeard || now.sounds != m_before.sounds || now.xsheet.FrameCount() != m_before.xsheet.FrameCount() ||
           now.geometry.frameRate != m_before.geometry.frameRate;
}

// What has stayed as it was is no part of the step.
void CSceneEdit::TakeFilesAfter() {
    const Path folder = m_context.model.Paths().SceneFolder();
    for (CFileChange& change : m_files)
        if (change.movedFrom.empty())
            change.after = KeepContents(folder / PathOf(change.file), mostKeptBytes);
    std::erase_if(m_files, [&](const CFileChange& change) {
        return change.movedFrom.empty() ? AreSameContents(change.before, change.after)
                                        : FileExists(folder / PathOf(change.movedFrom));
    });
    std::erase_if(m_deleted, [&](const std::string& file) {
        const Path path = folder / PathOf(file);
        return FileExists(path) || FolderExists(path);
    });
}

void CSceneEdit::LeaveStep() {
    CSceneModel& model = m_context.model;
    if (m_keptBytes < mostKeptBytes)
        TakeFilesAfter();
    else if (m_deleted.empty())
        model.history.AddBreak(m_name); // more than can be kept
    else
        m_files.clear(); // the trash may have it
    CStepChanges changes{CSceneChange(m_dragFrom.value_or(m_before), model.Scene()), {}, {}, std::move(m_files)};
    CStepHeading heading;
    heading.name = m_name;
    heading.kind = m_deleted.empty() ? HistoryEntryKind::Step : HistoryEntryKind::Deletion;
    heading.files = m_deleted;
    if (m_dragFrom)
        model.history.Continue(std::move(heading), changes, model.Scene().xsheet, model.Session());
    else
        model.history.Record(std::move(heading), changes, model.Scene().xsheet, model.Session());
    model.history.Withdraw(); // if no step has come of it
}

void CSceneEdit::End() {
    if (std::exchange(m_hasEnded, true))
        return;
    CSceneModel& model = m_context.model;
    model.ClampToXSheet();
    if (m_step == UndoStep::Own && model.history.IsOn())
        LeaveStep();
    if (model.sceneOpen && !m_isSilent && CanBeHeard())
        static_cast<void>(m_context.Report(PrepareSoundTrack(model))); // without a track there is silence
    for (const UpdateHint hint : m_hints)
        if (hint != UpdateHint::None)
            m_context.Update(hint);
}

void CSceneEdit::CallOff() {
    m_hints.clear();
    End();
}

} // namespace velmor
