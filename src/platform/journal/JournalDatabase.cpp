#include "platform/journal/JournalDatabase.h"

#include "platform/journal/Compressed.h"
#include "platform/journal/JournalSeal.h"

#include <sqlite3.h>

namespace velmor {

namespace {

std::int64_t Stored(std::uint64_t seal) {
    return static_cast<std::int64_t>(seal);
}

} // namespace

CJournalDatabase::CJournalDatabase(CSqlite connection, std::uint64_t seals)
    : m_connection(std::move(connection)),
      m_seals(seals),
      m_begin(m_connection, "BEGIN IMMEDIATE"),
      m_commit(m_connection, "COMMIT"),
      m_total(m_connection, "UPDATE total SET seals = ?"),
      m_dropStep(m_connection, "DELETE FROM steps WHERE id = ? RETURNING seal"),
      m_dropBody(m_connection, "DELETE FROM bodies WHERE id = ?"),
      m_dropMovesOf(m_connection, "DELETE FROM moves WHERE step = ? RETURNING seal"),
      m_dropMovesTo(m_connection, "DELETE FROM moves WHERE sequence <= ? RETURNING seal"),
      m_dropMove(m_connection, "DELETE FROM moves WHERE sequence = ? RETURNING seal"),
      m_dropNote(m_connection, "DELETE FROM notes WHERE name = ? RETURNING seal"),
      m_putStep(m_connection, "INSERT INTO steps VALUES(?, ?, ?, ?, ?)"),
      m_putBody(m_connection, "INSERT INTO bodies VALUES(?, ?)"),
      m_putMove(m_connection, "INSERT INTO moves VALUES(?, ?, ?, ?)"),
      m_putNote(m_connection, "INSERT INTO notes VALUES(?, ?, ?)") {
    // A commit waits for no disk, what is freed is not overwritten with zeros, and when the written is moved to its
    // place is ours to say.
    m_connection.Execute("PRAGMA synchronous = NORMAL; PRAGMA secure_delete = OFF; PRAGMA wal_autocheckpoint = 0");
}

void CJournalDatabase::Write(std::span<const CJournalEntry> entries) {
    m_begin.Run();
    try {
        for (const CJournalEntry& entry : entries)
            WriteOne(entry);
        m_total.Run(Stored(m_seals));
        m_commit.Run();
    } catch (...) {
        // SQLite may have done so by itself.
        sqlite3_exec(m_connection.Get(), "ROLLBACK", nullptr, nullptr, nullptr);
        throw;
    }
}

void CJournalDatabase::Settle() {
    const int code =
        sqlite3_wal_checkpoint_v2(m_connection.Get(), "main", SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
    if (code != SQLITE_OK)
        throw CSqliteFault(m_connection.Get(), code);
}

std::optional<JournalBytes> CJournalDatabase::ReadBody(std::int64_t step) const {
    CStatement row(m_connection,
                   "SELECT heading, size, checksum, seal, body FROM steps JOIN bodies USING(id) WHERE id = ?");
    if (!row.Start(step).Step())
        return std::nullopt;
    const std::span<const std::uint8_t> body = row.Bytes(4);
    const CStoredBody stored{body.size(), ChecksumIn(body)};
    // With the seal of its step, so that a body of earlier, whole in itself, is noticed.
    if (SealOf(step, row.Bytes(0), stored) != static_cast<std::uint64_t>(row.Integer(3)))
        return std::nullopt;
    return Decompress(body);
}

void CJournalDatabase::WriteOne(const CJournalEntry& entry) {
    for (const CJournalStep& step : entry.put)
        Put(step);
    for (const std::int64_t step : entry.remove) {
        Unseal(m_dropStep, step);
        m_dropBody.Run(step);
        Unseal(m_dropMovesOf, step);
    }
    for (const CJournalMove& move : entry.moves) {
        Unseal(m_dropMove, move.sequence);
        const std::uint64_t seal = SealOf(move);
        m_putMove.Run(move.sequence, move.step, std::int64_t{move.forward}, Stored(seal));
        m_seals += seal;
    }
    Unseal(m_dropMovesTo, entry.forgetMovesTo);
    for (const auto& [name, value] : entry.notes)
        Set(name, value);
}

void CJournalDatabase::Put(const CJournalStep& step) {
    Unseal(m_dropStep, step.id);
    m_dropBody.Run(step.id);
    const std::span<const std::uint8_t> heading(step.heading), body(step.body);
    const CStoredBody stored{body.size(), ChecksumIn(body)};
    const std::uint64_t seal = SealOf(step.id, heading, stored);
    m_putStep.Run(step.id, heading, Stored(stored.size), std::int64_t{stored.checksum}, Stored(seal));
    m_putBody.Run(step.id, body);
    m_seals += seal;
}

void CJournalDatabase::Set(std::string_view name, std::span<const std::uint8_t> value) {
    Unseal(m_dropNote, name);
    if (value.empty())
        return;
    const std::uint64_t seal = SealOf(name, value);
    m_putNote.Run(name, value, Stored(seal));
    m_seals += seal;
}

template<class Value>
void CJournalDatabase::Unseal(CStatement& deletion, const Value& value) {
    for (deletion.Start(value); deletion.Step();)
        m_seals -= static_cast<std::uint64_t>(deletion.Integer(0));
}

} // namespace velmor
