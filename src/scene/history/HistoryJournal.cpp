// How the history stands in its journal: steps and moves as they are, and these notes. "saved/Fox/7.bit" says up to
// which move a file holds what was open, and what the file was then; "saving/Fox/7.bit" what it will be (an xsheet
// together with the file of its notes, which has a "saved/" of its own as long as it is there); "undone"
// has the undone steps as of the time when the moves begin; "session" where the user was; "unfinished" a step that
// changes files just now.

#include "platform/files/Archive.h"
#include "platform/files/ContentHash.h"
#include "scene/history/History.h"
#include "xsheet/SheetNotesPlace.h"

#include <algorithm>
#include <limits>

namespace velmor {

namespace {

// Ids and sequences grow by one; nobody gets here by working.
constexpr std::int64_t mostNumber = std::numeric_limits<std::int64_t>::max() / 2;
constexpr std::string_view savedNote = "saved/";
constexpr std::string_view savingNote = "saving/";
constexpr const char* undoneNote = "undone";
constexpr const char* sessionNote = "session";
constexpr const char* unfinishedNote = "unfinished";

JournalBytes WriteIds(const std::vector<std::int64_t>& ids) {
    CArchiveWriter writer;
    for (const std::int64_t id : ids)
        writer.WriteWord(static_cast<std::uint64_t>(id));
    return std::move(writer).Take();
}

std::set<std::int64_t> ReadIds(const JournalBytes& bytes) {
    std::set<std::int64_t> ids;
    CArchiveReader reader(bytes);
    while (reader.Remaining() > 0 && !reader.Failed())
        ids.insert(static_cast<std::int64_t>(reader.ReadWord()));
    return ids;
}

/// What a file is to hold.
struct CContents {
    std::uint64_t size = 0;
    std::uint64_t hash = 0;
};

void WriteContents(CArchiveWriter& writer, const std::vector<std::uint8_t>& bytes) {
    writer.WriteWord(bytes.size());
    writer.WriteWord(ContentHash(bytes));
}

CContents ReadContents(CArchiveReader& reader) {
    CContents contents;
    contents.size = reader.ReadWord();
    contents.hash = reader.ReadWord();
    return contents;
}

bool Holds(const CFileStamp& stamp, const CContents& contents) {
    return stamp.exists && stamp.size == contents.size && stamp.hash == contents.hash;
}

// Whether the notes are those that a saving was to write; an older version had none.
bool AreNotes(CArchiveReader& reader, const CFileStamp& notes) {
    if (reader.Remaining() == 0)
        return !notes.exists;
    const CContents expected = ReadContents(reader);
    const bool haveFile = reader.ReadByte() != 0;
    return !reader.Failed() && (notes.exists ? Holds(notes, expected) : !haveFile);
}

const JournalBytes* NoteOf(const CJournalContents& contents, std::string_view name) {
    const auto note = contents.notes.find(name);
    return note != contents.notes.end() ? &note->second : nullptr;
}

} // namespace

void CHistory::Open(std::unique_ptr<CJournal> journal, CJournalContents contents, std::string xsheetFile,
                    const Path& sceneFolder) {
    Close();
    m_journal = std::move(journal);
    m_xsheetFile = std::move(xsheetFile);
    for (CJournalContents::CHeading& stored : contents.steps) {
        std::optional<CStepHeading> heading = ReadHeading(stored.heading, false);
        if (!heading || stored.id > mostNumber)
            continue;
        m_lastId = std::max(m_lastId, stored.id);
        m_stepBytes += stored.bytes;
        m_steps.push_back({stored.id, std::move(*heading), std::move(stored.heading), stored.bytes, true, true});
    }
    ReadNotes(contents);
    ReplayMoves(contents);
    FinishSaving(contents, sceneFolder);
}

// The program may have died when a file was written and that was not noted yet.
void CHistory::FinishSaving(const CJournalContents& contents, const Path& sceneFolder) {
    for (const auto& [name, bytes] : contents.notes) {
        if (!name.starts_with(savingNote))
            continue;
        const std::string file = name.substr(savingNote.size());
        CArchiveReader reader(bytes);
        const auto sequence = static_cast<std::int64_t>(reader.ReadWord());
        const CContents expected = ReadContents(reader);
        if (reader.Failed() || !IsSceneFile(file))
            continue;
        const CFileStamp stamp = CFileStamp::Of(sceneFolder / PathOf(file));
        if (!Holds(stamp, expected))
            continue;
        if (file != m_xsheetFile)
            m_saved[file] = {sequence, stamp};
        else if (const CFileStamp notes = NotesStamp(sceneFolder); AreNotes(reader, notes))
            SetSheetSaved({sequence, stamp}, notes);
    }
}

CFileStamp CHistory::NotesStamp(const Path& sceneFolder) const {
    return CFileStamp::Of(SheetNotesInForce(sceneFolder / PathOf(m_xsheetFile)));
}

std::string CHistory::NotesFile() const {
    return Utf8Of(SheetNotesFile(PathOf(m_xsheetFile)));
}

void CHistory::SetSheetSaved(const CSaved& xsheet, const CFileStamp& notes) {
    m_saved[m_xsheetFile] = xsheet;
    if (notes.exists)
        m_saved[NotesFile()] = {xsheet.sequence, notes};
    else
        m_saved.erase(NotesFile());
}

void CHistory::ReadNotes(const CJournalContents& contents) {
    for (const auto& [name, bytes] : contents.notes) {
        if (!name.starts_with(savedNote))
            continue;
        CArchiveReader reader(bytes);
        CSaved saved;
        saved.sequence = static_cast<std::int64_t>(reader.ReadWord());
        saved.stamp = CFileStamp::Read(reader);
        if (const std::string file = name.substr(savedNote.size());
            !reader.Failed() && IsSceneFile(file) && saved.sequence <= mostNumber) {
            m_saved[file] = saved;
            m_lastSequence = std::max(m_lastSequence, saved.sequence);
        }
    }
    if (const JournalBytes* session = NoteOf(contents, sessionNote))
        m_session = ReadSession(*session);
    if (const JournalBytes* note = NoteOf(contents, unfinishedNote)) {
        CArchiveReader reader(*note);
        const bool forward = reader.ReadByte() != 0;
        const auto body = reader.ReadBlock();
        if (std::optional<CStepChanges> changes = ReadChanges(body); !reader.Failed() && changes)
            m_unfinished.emplace(std::move(*changes), forward ? ChangeDirection::Forward : ChangeDirection::Back);
    }
}

// A step that is done for the first time takes the place of all that were undone; one that is done again is known
// from its undoing.
void CHistory::ReplayMoves(const CJournalContents& contents) {
    std::set<std::int64_t> undone;
    if (const JournalBytes* note = NoteOf(contents, undoneNote))
        undone = ReadIds(*note);
    m_moves = contents.moves;
    std::erase_if(m_moves, [](const CJournalMove& move) { return move.sequence > mostNumber; });
    for (const CJournalMove& move : m_moves) {
        m_lastSequence = std::max(m_lastSequence, move.sequence);
        if (!move.forward)
            undone.insert(move.step);
        else if (undone.erase(move.step) == 0)
            for (const std::int64_t id : std::exchange(undone, {}))
                Kill(id);
    }
    for (CStep& step : m_steps)
        step.isDone = !undone.contains(step.id);
}

void CHistory::GoOnIn(std::unique_ptr<CJournal> journal) {
    Finish();
    m_journal = std::move(journal);
    m_isFaultTold = false;
    const auto hasChanges = [this](const CStep& step) {
        return m_bodies.contains(step.id) ||
               (!step.heading.changesScene && !step.heading.changesFiles && step.heading.image.empty());
    };
    const auto lost = std::find_if_not(m_steps.rbegin(), m_steps.rend(), hasChanges);
    m_steps.erase(m_steps.begin(), lost.base());
    m_stepBytes = 0;
    CJournalEntry entry;
    for (const CStep& step : m_steps) {
        m_stepBytes += step.bytes;
        const auto body = m_bodies.find(step.id);
        entry.put.push_back({step.id, step.asWritten, body != m_bodies.end() ? body->second : JournalBytes()});
    }
    for (const auto& [file, saved] : m_saved)
        WriteSaved(entry, file);
    Write(std::move(entry));
    NoteAllSaved(m_session);
}

CStatus CHistory::TakeFault() {
    if (!m_journal || m_isFaultTold)
        return {};
    CStatus fault = m_journal->Fault();
    m_isFaultTold = !fault;
    return fault;
}

void CHistory::WaitUntilWritten() {
    if (m_journal)
        m_journal->WaitUntilWritten();
    m_isWriting = false;
}

void CHistory::Write(CJournalEntry entry) {
    if (!m_journal)
        return;
    m_journal->Write(std::move(entry));
    m_isWriting = true;
}

void CHistory::NoteState(CJournalEntry& entry, const CHistorySession& session) {
    m_session = session;
    entry.notes[sessionNote] = WriteSession(session);
}

void CHistory::WriteSaved(CJournalEntry& entry, const std::string& file) {
    const auto saved = m_saved.find(file);
    if (saved == m_saved.end())
        return;
    CArchiveWriter writer;
    writer.WriteWord(static_cast<std::uint64_t>(saved->second.sequence));
    saved->second.stamp.Write(writer);
    entry.notes[std::string(savedNote) + file] = std::move(writer).Take();
}

void CHistory::NoteSaving(const std::string& file, const std::function<std::vector<std::uint8_t>()>& bytesOfFile) {
    Finish();
    std::vector<std::uint8_t> bytes;
    try {
        bytes = bytesOfFile();
    } catch (const std::exception&) { // no memory: saving will say so
        return;
    }
    CArchiveWriter writer;
    writer.WriteWord(static_cast<std::uint64_t>(m_lastSequence));
    WriteContents(writer, bytes);
    WriteSaving(file, std::move(writer).Take());
}

void CHistory::NoteSheetSaving(const std::function<CSheetBytes()>& bytesOfSheet) {
    Finish();
    CSheetBytes bytes;
    try {
        bytes = bytesOfSheet();
    } catch (const std::exception&) { // no memory: saving will say so
        return;
    }
    CArchiveWriter writer;
    writer.WriteWord(static_cast<std::uint64_t>(m_lastSequence));
    WriteContents(writer, bytes.xsheet);
    WriteContents(writer, bytes.notes);
    writer.WriteByte(bytes.hasNotes ? 1 : 0);
    WriteSaving(m_xsheetFile, std::move(writer).Take());
}

void CHistory::WriteSaving(const std::string& file, JournalBytes note) {
    CJournalEntry entry;
    entry.notes[std::string(savingNote) + file] = std::move(note);
    Write(std::move(entry));
    WaitUntilWritten();
}

void CHistory::EndAnnouncement(CJournalEntry& entry) {
    if (std::exchange(m_isAnnounced, false))
        entry.notes[unfinishedNote] = {};
}

void CHistory::Announce(const CStepChanges& changes, ChangeDirection direction) {
    CArchiveWriter writer;
    writer.WriteByte(direction == ChangeDirection::Forward ? 1 : 0);
    writer.WriteBlock(WriteChanges(changes));
    CJournalEntry entry;
    entry.notes[unfinishedNote] = std::move(writer).Take();
    m_isAnnounced = true;
    Write(std::move(entry));
    WaitUntilWritten();
}

void CHistory::Withdraw() {
    if (!m_isAnnounced && !m_unfinished)
        return;
    m_unfinished.reset();
    m_isAnnounced = false;
    CJournalEntry entry;
    entry.notes[unfinishedNote] = {};
    Write(std::move(entry));
}

void CHistory::NoteSaved(const std::string& file, const CFileStamp& stamp) {
    Finish();
    m_saved[file] = {m_lastSequence, stamp};
    CJournalEntry entry;
    entry.notes[std::string(savingNote) + file] = {};
    WriteSaved(entry, file);
    Write(std::move(entry));
}

void CHistory::NoteSheetSaved(const Path& sceneFolder) {
    Finish();
    SetSheetSaved({m_lastSequence, CFileStamp::Of(sceneFolder / PathOf(m_xsheetFile))}, NotesStamp(sceneFolder));
    CJournalEntry entry;
    entry.notes[std::string(savingNote) + m_xsheetFile] = {};
    entry.notes[std::string(savedNote) + NotesFile()] = {};
    WriteSaved(entry, m_xsheetFile);
    WriteSaved(entry, NotesFile());
    Write(std::move(entry));
}

void CHistory::NoteAllSaved(const CHistorySession& session) {
    Finish();
    CJournalEntry entry;
    entry.forgetMovesTo = m_lastSequence;
    std::vector<std::int64_t> undone;
    for (const CStep& step : m_steps)
        if (!step.isDone)
            undone.push_back(step.id);
    entry.notes[undoneNote] = WriteIds(undone);
    for (const auto& [id, heading] : m_dead)
        entry.remove.push_back(id);
    const bool hasChanged = !m_moves.empty();
    m_dead.clear();
    m_moves.clear();
    m_isAllSaved = true;
    NoteState(entry, session);
    if (hasChanged && undone.empty()) {
        CStepHeading heading;
        heading.name = "Save All";
        heading.kind = HistoryEntryKind::Saved;
        const CStep& mark = Append(std::move(heading), {});
        entry.put.push_back({mark.id, mark.asWritten, {}});
    }
    KeepWithinLimits(entry);
    Write(std::move(entry));
}

bool CHistory::IsAsNoted(const std::string& file, const Path& path) const {
    const auto saved = m_saved.find(file);
    return saved != m_saved.end() && saved->second.stamp.IsOf(path);
}

bool CHistory::AreNotesAsNoted(const Path& sceneFolder) const {
    const auto saved = m_saved.find(NotesFile());
    return (saved != m_saved.end() ? saved->second.stamp : CFileStamp())
        .IsOf(SheetNotesInForce(sceneFolder / PathOf(m_xsheetFile)));
}

bool CHistory::IsSheetAsNoted(const Path& sceneFolder) const {
    return IsAsNoted(m_xsheetFile, sceneFolder / PathOf(m_xsheetFile)) && AreNotesAsNoted(sceneFolder);
}

} // namespace velmor
