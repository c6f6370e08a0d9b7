#pragma once

#include "platform/journal/Journal.h"
#include "scene/history/FileStamp.h"
#include "scene/history/HistorySession.h"
#include "scene/history/StepChanges.h"
#include "scene/history/StepHeading.h"
#include "xsheet/XSheetFile.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace velmor {

/// What a journal has of work that is in no file.
struct CUnsavedWork {
    int changes = 0;
    std::int64_t firstTime = 0; ///< milliseconds since 1970, UTC
    std::int64_t lastTime = 0;
    CHistoryPicture picture; ///< of the last step that has one
    std::string misfit;      ///< why it does not go with the files; empty when it does
};

/// Everything that was done to the open scene, in its order, as far back as the bytes allow: steps that are done,
/// then steps that were undone. A new step takes the undone ones' place. It knows what steps are, not how they are
/// undone.
///
/// Steps lie in a journal, when there is one; memory holds the latest ones' changes. Without a journal it holds all
/// there are, and there are fewer.
class CHistory {
public:
    static constexpr std::uint64_t mostMemory = std::uint64_t{64} << 20;
    static constexpr std::uint64_t usualLimit = std::uint64_t{1} << 30;

    struct CStep {
        std::int64_t id = 0;
        CStepHeading heading;                ///< without its picture
        std::vector<std::uint8_t> asWritten; ///< with it
        std::uint64_t bytes = 0;             ///< that it takes
        bool isDone = true;
        bool isSizeStored = false; ///< `bytes` is what it takes in the journal, not a guess
    };

    /// Bytes that all steps may take; the oldest go first.
    void SetLimit(std::uint64_t bytes) { m_limit = bytes; }
    /// Whether steps are kept at all: not with a limit of 0, as where nobody is who could undo.
    bool IsOn() const { return m_limit > 0; }
    /// Forgets all, and leaves the journal as it is.
    void Close();
    /// As Close(), then takes up what a journal holds. `xsheetFile` is the scene's own, from `sceneFolder` on.
    void Open(std::unique_ptr<CJournal> journal, CJournalContents contents, std::string xsheetFile,
              const Path& sceneFolder);
    bool HasJournal() const { return m_journal != nullptr && m_journal->Fault(); }
    /// Goes on in another journal, which is empty, while every file holds what is open. Steps whose changes only
    /// the old one had are gone, with those before them.
    void GoOnIn(std::unique_ptr<CJournal> journal);
    /// Gives up a journal that cannot be written, so that its file can be removed.
    void LeaveJournal() { m_journal.reset(); }
    /// Whether nothing is written any more although every file holds what is open: the journal can start anew.
    bool CanStartAnew() const { return m_journal != nullptr && !HasJournal() && m_isAllSaved; }
    /// Why nothing can be written any more, told once.
    CStatus TakeFault();
    /// Whether nothing is being written, and nothing is to be told.
    bool IsIdle() const { return !m_isWriting; }
    /// Returns when every finished step would survive the death of the program.
    void WaitUntilWritten();

    const std::deque<CStep>& Steps() const { return m_steps; }
    const CStep* Find(std::int64_t id) const;
    /// The step that undo, and that redo, would move; null for none.
    const CStep* NextUndo() const;
    const CStep* NextRedo() const;
    static CHistoryPicture PictureOf(const CStep& step);
    /// For a list, without their pictures.
    std::vector<CHistoryEntry> Entries() const;
    /// What a step changed; nothing when it cannot be read any more.
    std::optional<CStepChanges> Changes(std::int64_t id);
    /// Empties what a step brings back of what was deleted after it.
    void ClearDeleted(CScene& scene, std::int64_t step) const;

    /// A step was done. Its heading has name, kind, deleted files and picture; the rest follows from the changes.
    void Record(CStepHeading heading, const CStepChanges& changes, const CXSheet& sheet,
                const CHistorySession& session);
    /// As Record(), in the place of the last step, which it goes on with and is not finished before Finish(): what
    /// a drag does.
    void Continue(CStepHeading heading, const CStepChanges& changes, const CXSheet& sheet,
                  const CHistorySession& session);
    void Finish();
    /// What Continue() has not finished becomes one with the step before it, if that was the same thing in the same
    /// frame and is in no file yet: many small moves are one. `now` is the scene as it is.
    void JoinWithLast(const CScene& now);
    /// A step was undone, or done again.
    void NoteMove(std::int64_t id, ChangeDirection direction, const CHistorySession& session);
    /// A step can be undone or done again no more.
    void Drop(std::int64_t id);
    /// Undo does not go past this place.
    void AddBreak(const std::string& reason);

    /// A step will change files now; should it not come to its end, the next opening takes back what it has done.
    /// Returns when this would survive the death of the program.
    void Announce(const CStepChanges& changes, ChangeDirection direction);
    /// It did nothing after all. One that comes to its end is recorded instead, or noted as moved.
    void Withdraw();
    /// What was announced and never came to its end, when the journal was opened.
    const std::optional<std::pair<CStepChanges, ChangeDirection>>& Unfinished() const { return m_unfinished; }

    /// A file will be replaced by bytes that hold what is open. Should the program die before NoteSaved(), the
    /// next opening finds out whether it was.
    void NoteSaving(const std::string& file, const std::function<std::vector<std::uint8_t>()>& bytesOfFile);
    /// A file holds what is open.
    void NoteSaved(const std::string& file, const CFileStamp& stamp);
    /// The same for the scene's sheet, which is its xsheet with its notes.
    void NoteSheetSaving(const std::function<CSheetBytes()>& bytesOfSheet);
    void NoteSheetSaved(const Path& sceneFolder);
    /// Every file does: nothing is needed any more to get from the files to what is open.
    void NoteAllSaved(const CHistorySession& session);
    /// Whether the sheet was ever noted.
    bool IsSheetKnown() const { return m_saved.contains(m_xsheetFile); }
    /// Whether it is the one that was last noted.
    bool IsSheetAsNoted(const Path& sceneFolder) const;

    /// What the journal has that is in no file; `sceneFolder` is where the files are.
    std::optional<CUnsavedWork> Unsaved(const Path& sceneFolder) const;
    const CHistorySession& Session() const { return m_session; }
    /// Make of what a file holds what was open. False when that does not go.
    [[nodiscard]] bool Replay(CScene& scene);
    [[nodiscard]] bool Replay(CCelImg& image, const std::string& file);
    /// What is in no file is given up.
    void DiscardUnsaved();

private:
    struct CSaved {
        std::int64_t sequence = 0; ///< of the last move that the file has in it
        CFileStamp stamp;
    };

    CStep& Append(CStepHeading heading, const std::vector<std::uint8_t>& body);
    CStep MakeStep(std::int64_t id, CStepHeading heading, std::uint64_t bodyBytes) const;
    void KillUndone();
    void Kill(std::int64_t id);
    void ReplayMoves(const CJournalContents& contents);
    void ReadNotes(const CJournalContents& contents);
    void FinishSaving(const CJournalContents& contents, const Path& sceneFolder);
    bool IsAsNoted(const std::string& file, const Path& path) const;
    std::string NotesFile() const;
    CFileStamp NotesStamp(const Path& sceneFolder) const;
    void SetSheetSaved(const CSaved& xsheet, const CFileStamp& notes);
    bool AreNotesAsNoted(const Path& sceneFolder) const;
    void WriteSaving(const std::string& file, std::vector<std::uint8_t> note);
    void EndAnnouncement(CJournalEntry& entry);
    void Keep(std::int64_t id, std::vector<std::uint8_t> body);
    void KeepWithinLimits(CJournalEntry& entry);
    void TakeStoredSizes();
    void RemoveFirst(CJournalEntry& entry);
    void AddMove(CJournalEntry& entry, std::int64_t id, bool forward);
    void NoteState(CJournalEntry& entry, const CHistorySession& session);
    void WriteSaved(CJournalEntry& entry, const std::string& file);
    void Write(CJournalEntry entry);
    bool IsUnsaved(const CJournalMove& move) const;
    const CStepHeading* HeadingOf(std::int64_t id) const;
    std::int64_t SavedSequence(const std::string& file) const;

    std::uint64_t m_limit = usualLimit;
    std::unique_ptr<CJournal> m_journal;
    std::string m_xsheetFile;
    std::deque<CStep> m_steps;                                  ///< by id; the undone ones follow the done ones
    std::uint64_t m_stepBytes = 0;                              ///< of all of them
    std::map<std::int64_t, CStepHeading> m_dead;                ///< undone for good; needed until all is saved
    std::vector<CJournalMove> m_moves;                          ///< since all was saved
    std::map<std::int64_t, std::vector<std::uint8_t>> m_bodies; ///< by step
    std::uint64_t m_bodyBytes = 0;
    std::map<std::string, CSaved, std::less<>> m_saved;
    CHistorySession m_session;
    std::optional<std::pair<CStepChanges, ChangeDirection>> m_unfinished;
    std::optional<std::int64_t> m_open; ///< the step that Continue() goes on with
    std::int64_t m_lastId = 0;
    std::int64_t m_lastSequence = 0;
    bool m_isAnnounced = false;
    bool m_isAllSaved = true;
    bool m_isWriting = false; ///< since the last WaitUntilWritten()
    bool m_isFaultTold = false;
};

} // namespace velmor
