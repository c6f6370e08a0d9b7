#include "scene/history/History.h"

#include "platform/files/Archive.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace velmor {

namespace {

std::int64_t Now() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
}

bool IsUndoable(const CHistory::CStep& step) {
    return step.heading.kind == HistoryEntryKind::Step;
}

// "Fox/7.bit" without its ending, in two parts.
std::pair<std::string, std::string> FolderAndName(const std::string& file) {
    const Path path = PathOf(file);
    return {Utf8Of(path.parent_path()), Utf8Of(path.stem())};
}

} // namespace

void CHistory::Close() {
    Finish();
    const std::uint64_t limit = m_limit;
    *this = CHistory();
    m_limit = limit;
}

const CHistory::CStep* CHistory::Find(std::int64_t id) const {
    const auto step = std::ranges::lower_bound(m_steps, id, {}, &CStep::id);
    return step != m_steps.end() && step->id == id ? &*step : nullptr;
}

const CHistory::CStep* CHistory::NextUndo() const {
    for (auto step = m_steps.rbegin(); step != m_steps.rend(); ++step) {
        if (step->heading.kind == HistoryEntryKind::Break)
            return nullptr;
        if (IsUndoable(*step) && step->isDone)
            return &*step;
    }
    return nullptr;
}

// Looked for from the end: there may be a million steps, and few of them are undone.
const CHistory::CStep* CHistory::NextRedo() const {
    const CStep* next = nullptr;
    for (auto step = m_steps.rbegin(); step != m_steps.rend() && !(IsUndoable(*step) && step->isDone); ++step)
        if (!step->isDone)
            next = &*step;
    return next;
}

CHistoryPicture CHistory::PictureOf(const CStep& step) {
    const std::optional<CStepHeading> heading = ReadHeading(step.asWritten, true);
    return heading ? heading->picture : CHistoryPicture();
}

std::vector<CHistoryEntry> CHistory::Entries() const {
    std::vector<CHistoryEntry> entries;
    entries.reserve(m_steps.size());
    for (const CStep& step : m_steps) {
        const CStepHeading& heading = step.heading;
        entries.push_back({step.id,
                           heading.time,
                           heading.name,
                           heading.subjects,
                           heading.kind,
                           step.isDone,
                           heading.canComeBack && step.isDone,
                           {},
                           heading.cells,
                           heading.levels,
                           heading.frames});
    }
    return entries;
}

std::optional<CStepChanges> CHistory::Changes(std::int64_t id) {
    if (const auto kept = m_bodies.find(id); kept != m_bodies.end())
        return ReadChanges(kept->second);
    if (!m_journal)
        return std::nullopt;
    const std::optional<JournalBytes> body = m_journal->ReadBody(id);
    return body ? ReadChanges(*body) : std::nullopt;
}

void CHistory::ClearDeleted(CScene& scene, std::int64_t step) const {
    for (const CStep& later : m_steps) {
        if (later.id <= step || later.heading.kind != HistoryEntryKind::Deletion)
            continue;
        for (const std::string& file : later.heading.files) {
            const auto [folder, name] = FolderAndName(file);
            if (file.ends_with('/'))
                scene.xsheet.ClearFolderReferences(folder);
            else if (folder == soundsFolder)
                scene.sounds.RemoveNamed(name);
            else
                scene.xsheet.ClearReferences(folder, name);
        }
    }
}

CHistory::CStep CHistory::MakeStep(std::int64_t id, CStepHeading heading, std::uint64_t bodyBytes) const {
    CStep step;
    step.id = id;
    step.asWritten = WriteHeading(heading);
    step.bytes = step.asWritten.size() + bodyBytes;
    step.heading = std::move(heading);
    step.heading.picture = {};
    return step;
}

CHistory::CStep& CHistory::Append(CStepHeading heading, const std::vector<std::uint8_t>& body) {
    heading.time = Now();
    m_steps.push_back(MakeStep(++m_lastId, std::move(heading), body.size()));
    m_stepBytes += m_steps.back().bytes;
    return m_steps.back();
}

void CHistory::KillUndone() {
    const CStep* next = NextRedo();
    const std::int64_t first = next != nullptr ? next->id : m_lastId + 1;
    for (std::size_t index = m_steps.size(); index-- > 0 && m_steps[index].id >= first;)
        if (!m_steps[index].isDone)
            Kill(m_steps[index].id);
}

void CHistory::Kill(std::int64_t id) {
    const auto step = std::ranges::lower_bound(m_steps, id, {}, &CStep::id);
    if (step == m_steps.end() || step->id != id)
        return;
    m_stepBytes -= step->bytes;
    m_dead.emplace(id, std::move(step->heading));
    m_steps.erase(step);
    if (const auto body = m_bodies.find(id); body != m_bodies.end()) {
        m_bodyBytes -= body->second.size();
        m_bodies.erase(body);
    }
}

void CHistory::Keep(std::int64_t id, std::vector<std::uint8_t> body) {
    std::vector<std::uint8_t>& kept = m_bodies[id];
    m_bodyBytes = m_bodyBytes - kept.size() + body.size();
    kept = std::move(body);
}

void CHistory::RemoveFirst(CJournalEntry& entry) {
    const std::int64_t id = m_steps.front().id;
    if (const auto body = m_bodies.find(id); body != m_bodies.end()) {
        m_bodyBytes -= body->second.size();
        m_bodies.erase(body);
    }
    entry.remove.push_back(id);
    m_stepBytes -= m_steps.front().bytes;
    m_steps.pop_front();
}

void CHistory::KeepWithinLimits(CJournalEntry& entry) {
    // Without a journal what leaves the memory is gone. The step that was just made stays in any case.
    while (m_bodyBytes > mostMemory && m_bodies.size() > 1) {
        if (HasJournal()) {
            m_bodyBytes -= m_bodies.begin()->second.size();
            m_bodies.erase(m_bodies.begin());
        } else if (m_steps.size() > 1) {
            RemoveFirst(entry);
        } else {
            break;
        }
    }
    if (m_stepBytes > m_limit)
        TakeStoredSizes();
    if (m_stepBytes <= m_limit)
        return;
    // What leads from the files to what is open stays.
    const std::int64_t firstNeeded =
        m_moves.empty() ? m_lastId : std::ranges::min(m_moves, {}, &CJournalMove::step).step;
    while (m_stepBytes > m_limit && m_steps.size() > 1 && m_steps.front().id < firstNeeded)
        RemoveFirst(entry);
}

// What a step takes in the journal is known once it is written.
void CHistory::TakeStoredSizes() {
    for (auto step = m_steps.rbegin(); m_journal && step != m_steps.rend() && !step->isSizeStored; ++step)
        if (const std::uint64_t stored = m_journal->StoredBytes(step->id); stored > 0) {
            m_stepBytes = m_stepBytes - step->bytes + stored;
            step->bytes = stored;
            step->isSizeStored = true;
        }
}

void CHistory::AddMove(CJournalEntry& entry, std::int64_t id, bool forward) {
    entry.moves.push_back({++m_lastSequence, id, forward});
    m_moves.push_back(entry.moves.back());
}

void CHistory::Record(CStepHeading heading, const CStepChanges& changes, const CXSheet& sheet,
                      const CHistorySession& session) {
    Finish(); // of a drag that a key has come into, which is a step of its own
    Continue(std::move(heading), changes, sheet, session);
    Finish();
}

void CHistory::Continue(CStepHeading heading, const CStepChanges& changes, const CXSheet& sheet,
                        const CHistorySession& session) {
    m_session = session;
    if (!IsOn())
        return;
    if (changes.IsEmpty()) {
        if (m_open)
            Kill(*std::exchange(m_open, std::nullopt)); // a drag that ends where it began
        return;
    }
    Describe(heading, changes, sheet);
    std::vector<std::uint8_t> body = WriteChanges(changes);
    if (!m_open) {
        KillUndone();
        m_open = Append(std::move(heading), body).id;
    } else {
        heading.time = m_steps.back().heading.time;
        m_stepBytes -= m_steps.back().bytes;
        m_steps.back() = MakeStep(*m_open, std::move(heading), body.size());
        m_stepBytes += m_steps.back().bytes;
    }
    Keep(*m_open, std::move(body));
}

void CHistory::Finish() {
    if (!m_open)
        return;
    const std::int64_t id = *std::exchange(m_open, std::nullopt);
    const CStep& step = m_steps.back();
    CJournalEntry entry;
    if (m_journal)
        entry.put.push_back({id, step.asWritten, m_bodies[id]});
    // One that only grew is in the moves already.
    if (m_moves.empty() || m_moves.back().step != id)
        AddMove(entry, id, true);
    if (!step.heading.image.empty())
        WriteSaved(entry, step.heading.image);
    NoteState(entry, m_session);
    EndAnnouncement(entry);
    KeepWithinLimits(entry);
    m_isAllSaved = false;
    Write(std::move(entry));
}

void CHistory::JoinWithLast(const CScene& now) {
    if (!m_open || m_steps.size() < 2 || m_moves.empty())
        return;
    const CStep& open = m_steps.back();
    const CStep& last = m_steps[m_steps.size() - 2];
    const CJournalMove& move = m_moves.back();
    const bool isSame = IsUndoable(last) && last.heading.name == open.heading.name && last.heading.onlyFrame >= 0 &&
                        last.heading.onlyFrame == open.heading.onlyFrame;
    const bool isSaved = m_saved.contains(m_xsheetFile) && move.sequence <= SavedSequence(m_xsheetFile);
    // One that was undone and done again may be in a file as it was.
    const auto moves = std::ranges::count(m_moves, last.id, &CJournalMove::step);
    if (!isSame || isSaved || move.step != last.id || !move.forward || moves > 1)
        return;
    const std::optional<CStepChanges> first = Changes(last.id);
    const std::optional<CStepChanges> second = Changes(open.id);
    CScene before = now;
    if (!first || !second || !second->scene.Apply(before, ChangeDirection::Back) ||
        !first->scene.Apply(before, ChangeDirection::Back))
        return;
    CStepHeading heading = last.heading;
    const std::int64_t id = last.id;
    Kill(*m_open);
    m_open = id;
    const CStepChanges both{CSceneChange(before, now), {}, {}, {}};
    Describe(heading, both, now.xsheet);
    std::vector<std::uint8_t> body = WriteChanges(both);
    m_stepBytes -= m_steps.back().bytes;
    m_steps.back() = MakeStep(id, std::move(heading), body.size());
    m_stepBytes += m_steps.back().bytes;
    Keep(id, std::move(body));
}

void CHistory::NoteMove(std::int64_t id, ChangeDirection direction, const CHistorySession& session) {
    Finish();
    const auto step = std::ranges::lower_bound(m_steps, id, {}, &CStep::id);
    if (step == m_steps.end() || step->id != id)
        return;
    step->isDone = direction == ChangeDirection::Forward;
    CJournalEntry entry;
    AddMove(entry, id, step->isDone);
    if (!step->heading.image.empty())
        WriteSaved(entry, step->heading.image);
    NoteState(entry, session);
    EndAnnouncement(entry);
    m_isAllSaved = false;
    Write(std::move(entry));
}

void CHistory::Drop(std::int64_t id) {
    Kill(id);
}

void CHistory::AddBreak(const std::string& reason) {
    Finish();
    KillUndone();
    CStepHeading heading;
    heading.name = reason;
    heading.kind = HistoryEntryKind::Break;
    const CStep& step = Append(std::move(heading), {});
    CJournalEntry entry;
    entry.put.push_back({step.id, step.asWritten, {}});
    Write(std::move(entry));
}

} // namespace velmor
