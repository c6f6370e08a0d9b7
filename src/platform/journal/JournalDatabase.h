#pragma once

#include "platform/journal/Journal.h"
#include "platform/journal/JournalSeal.h"
#include "platform/journal/Sqlite.h"

#include <span>

namespace velmor {

/// The tables of an open journal. For one thread at a time. What fails throws a CSqliteFault or a std::bad_alloc.
class CJournalDatabase {
public:
    /// Takes a connection whose tables have been looked at, and the sum of the seals in it.
    CJournalDatabase(CSqlite connection, std::uint64_t seals);

    /// Writes entries whose bodies are compressed: all of them or, when it throws, none.
    void Write(std::span<const CJournalEntry> entries);
    /// Moves what has been written lately to its place in the file, and onto the disk.
    void Settle();
    std::optional<JournalBytes> ReadBody(std::int64_t step) const;

private:
    void WriteOne(const CJournalEntry& entry);
    void Put(const CJournalStep& step);
    void Set(std::string_view name, std::span<const std::uint8_t> value);
    template<class Value>
    void Unseal(CStatement& deletion, const Value& value);

    CSqlite m_connection;
    std::uint64_t m_seals = 0; ///< the sum of all in the file
    CStatement m_begin, m_commit, m_total;
    CStatement m_dropStep, m_dropBody, m_dropMovesOf, m_dropMovesTo, m_dropMove, m_dropNote;
    CStatement m_putStep, m_putBody, m_putMove, m_putNote;
};

} // namespace velmor
