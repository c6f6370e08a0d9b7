#pragma once

#include "platform/journal/Compressed.h"
#include "platform/journal/Journal.h"
#include "platform/journal/JournalDatabase.h"
#include "platform/journal/WriteAheadFile.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace velmor {

/// Writes what is queued, on its thread. Commits wait for no disk; once a second the thread does, for all that was
/// committed since, and it sleeps while nothing was.
class CJournal::CWriter {
public:
    /// Throws std::system_error where there is no thread to be had.
    CWriter(const Path& file, CSqlite connection, std::uint64_t seals, const CJournalContents& contents);
    CWriter(const CWriter&) = delete;
    CWriter& operator=(const CWriter&) = delete;
    ~CWriter();

    void Write(CJournalEntry entry);
    void WaitUntilWritten();
    std::optional<JournalBytes> ReadBody(std::int64_t step);
    std::uint64_t StoredBytes(std::int64_t step) const;
    CStatus Fault() const;

private:
    using Clock = std::chrono::steady_clock;
    using Entries = std::vector<CJournalEntry>;
    using Sizes = std::map<std::int64_t, std::uint64_t>;

    void Work();
    /// What is to be written next; nothing when that is over.
    Entries WaitForEntries();
    /// Runs a part of the work; what it throws becomes the fault.
    template<class Part>
    void Try(Part part);
    void Commit(Entries& entries);
    void Sync();
    /// Moves what stands beside the file into it when that has become much.
    void SettleIfLarge();
    void Count(const Entries& written);
    /// Takes the text; only the first one counts.
    void Fail(CStatus& fault);

    const Path m_file;
    CCompressor m_compressor;
    std::mutex m_inDatabase; ///< held while the connection is used
    CJournalDatabase m_database;
    CWriteAheadFile m_writeAhead;
    std::optional<Clock::time_point> m_syncAt; ///< there, while something committed may not be on the disk

    mutable std::mutex m_mutex; ///< of what follows
    std::condition_variable m_queued;
    std::condition_variable m_settled;
    Entries m_queue;
    std::uint64_t m_given = 0; ///< entries so far
    std::uint64_t m_written = 0;
    Sizes m_sizes; ///< of the steps that are written
    CStatus m_fault;
    CStatus m_outOfMemory; ///< made while there was some
    bool m_stopping = false;

    std::thread m_thread; ///< last: it uses everything above
};

} // namespace velmor
