// What is in no file: from the files, which hold what was open up to some move, the moves since then lead to what
// was open last.

#include "scene/history/History.h"

#include <algorithm>

namespace velmor {

std::int64_t CHistory::SavedSequence(const std::string& file) const {
    const auto saved = m_saved.find(file);
    return saved != m_saved.end() ? saved->second.sequence : m_lastSequence;
}

const CStepHeading* CHistory::HeadingOf(std::int64_t id) const {
    if (const CStep* step = Find(id))
        return &step->heading;
    const auto dead = m_dead.find(id);
    return dead != m_dead.end() ? &dead->second : nullptr;
}

bool CHistory::IsUnsaved(const CJournalMove& move) const {
    const CStepHeading* heading = HeadingOf(move.step);
    if (heading == nullptr)
        return false;
    // Of images only the one under edit can differ from its file.
    return (heading->changesScene && move.sequence > SavedSequence(m_xsheetFile)) ||
           (!heading->image.empty() && heading->image == m_session.image &&
            move.sequence > SavedSequence(heading->image));
}

std::optional<CUnsavedWork> CHistory::Unsaved(const Path& sceneFolder) const {
    // What was undone after all, or done again, is no change.
    std::map<std::int64_t, int> moved;
    for (const CJournalMove& move : m_moves)
        if (IsUnsaved(move))
            moved[move.step] += move.forward ? 1 : -1;
    std::erase_if(moved, [](const auto& step) { return step.second == 0; });
    CUnsavedWork unsaved;
    bool changesScene = false;
    bool changesImage = false;
    for (const auto& [id, net] : moved) {
        const CStepHeading& heading = *HeadingOf(id);
        changesScene = changesScene || heading.changesScene;
        changesImage = changesImage || !heading.image.empty();
        unsaved.firstTime = unsaved.changes == 0 ? heading.time : std::min(unsaved.firstTime, heading.time);
        unsaved.lastTime = std::max(unsaved.lastTime, heading.time);
        ++unsaved.changes;
        if (const CStep* step = Find(id); step != nullptr && !heading.image.empty())
            unsaved.picture = PictureOf(*step);
    }
    if (unsaved.changes == 0)
        return std::nullopt;
    for (const auto& [isChanged, file] : {std::pair(changesScene, m_xsheetFile), {changesImage, m_session.image}})
        if (isChanged && !IsAsNoted(file, sceneFolder / PathOf(file)))
            unsaved.misfit += file + "\n";
    if (changesScene && !AreNotesAsNoted(sceneFolder))
        unsaved.misfit += NotesFile() + "\n";
    return unsaved;
}

bool CHistory::Replay(CScene& scene) {
    CScene replayed = scene;
    for (const CJournalMove& move : m_moves) {
        const CStepHeading* heading = HeadingOf(move.step);
        if (heading == nullptr || !heading->changesScene || move.sequence <= SavedSequence(m_xsheetFile))
            continue;
        const std::optional<CStepChanges> changes = Changes(move.step);
        const ChangeDirection direction = move.forward ? ChangeDirection::Forward : ChangeDirection::Back;
        if (!changes || !changes->scene.Apply(replayed, direction))
            return false;
        ClearDeleted(replayed, move.step);
    }
    scene = std::move(replayed);
    return true;
}

bool CHistory::Replay(CCelImg& image, const std::string& file) {
    CCelImg replayed = image;
    for (const CJournalMove& move : m_moves) {
        const CStepHeading* heading = HeadingOf(move.step);
        if (heading == nullptr || heading->image != file || move.sequence <= SavedSequence(file))
            continue;
        const std::optional<CStepChanges> changes = Changes(move.step);
        const ChangeDirection direction = move.forward ? ChangeDirection::Forward : ChangeDirection::Back;
        if (!changes || !changes->painting.Apply(replayed, direction))
            return false;
    }
    image = std::move(replayed);
    return true;
}

void CHistory::DiscardUnsaved() {
    CJournalEntry entry;
    entry.forgetMovesTo = m_lastSequence;
    m_moves.clear();
    Write(std::move(entry));
    AddBreak("Changes that were not saved were discarded here");
}

} // namespace velmor
