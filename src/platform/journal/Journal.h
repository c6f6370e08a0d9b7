#pragma once

#include "platform/Status.h"
#include "platform/files/Files.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace velmor {

using JournalBytes = std::vector<std::uint8_t>;

/// A step as it is written: what lists show of it, and what it changed, which is kept compressed and read only when
/// it is needed.
struct CJournalStep {
    std::int64_t id = 0; ///< from 1, grows with time
    JournalBytes heading;
    JournalBytes body;
};

/// That a step was done (or done again), or undone. What has happened since a file was written tells how to get
/// from the file to what was open.
struct CJournalMove {
    std::int64_t sequence = 0; ///< from 1, grows with time
    std::int64_t step = 0;
    bool forward = true;
};

/// What is written at once, in this order: all of it or nothing.
struct CJournalEntry {
    std::vector<CJournalStep> put;                          ///< new, or in place of those with the same id
    std::vector<std::int64_t> remove;                       ///< steps, with their moves
    std::vector<CJournalMove> moves;                        ///< behind those that there are
    std::int64_t forgetMovesTo = 0;                         ///< those with this sequence and below go
    std::map<std::string, JournalBytes, std::less<>> notes; ///< small values by name; an empty one removes it
};

/// What a journal holds, but for the bodies.
struct CJournalContents {
    struct CHeading {
        std::int64_t id = 0;
        JournalBytes heading;
        std::uint64_t bytes = 0; ///< that heading and body take in the file
    };

    std::vector<CHeading> steps;     ///< by id
    std::vector<CJournalMove> moves; ///< by sequence
    std::map<std::string, JournalBytes, std::less<>> notes;
};

/// A file of steps, written on a thread of its own: nobody waits for it who does not ask to. What was written
/// survives the death of the process at once and that of the machine a second later. One process at a time has it
/// open.
///
/// The first thing that cannot be written ends it: Fault() tells, and everything later is passed over, so that the
/// file never misses a step in the middle.
class CJournal {
public:
    /// Opens a journal or makes it, with the folders above it. Nothing and the reason where that fails: another
    /// program has it open, the folder cannot be written, or the file is damaged, no journal, or of a newer
    /// version. The file is then as it was; `isDamaged` says whether no program could read it.
    static CStatus Open(const Path& file, std::unique_ptr<CJournal>& journal, CJournalContents& contents,
                        bool* isDamaged = nullptr);

    ~CJournal(); ///< after everything is written and on the disk
    CJournal(const CJournal&) = delete;
    CJournal& operator=(const CJournal&) = delete;

    /// Returns at once.
    void Write(CJournalEntry entry);
    /// Returns when everything before it is safe from the death of the process, or has failed.
    void WaitUntilWritten();
    /// What a step changed. Waits for what is being written; nothing when it is not there or damaged.
    std::optional<JournalBytes> ReadBody(std::int64_t step);
    /// Bytes that heading and body of a step that was written take in the file; 0 where there is none.
    std::uint64_t StoredBytes(std::int64_t step);
    /// Why nothing is written any more.
    CStatus Fault() const;

private:
    class CWriter;
    explicit CJournal(std::unique_ptr<CWriter> writer);

    std::unique_ptr<CWriter> m_writer;
};

} // namespace velmor
