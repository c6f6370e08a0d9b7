#include "platform/journal/JournalContents.h"

#include "platform/journal/JournalFormat.h"
#include "platform/journal/JournalSeal.h"

namespace velmor {

namespace {

JournalBytes Copy(std::span<const std::uint8_t> bytes) {
    return {bytes.begin(), bytes.end()};
}

/// Adds up what the rows say, and compares it with what they are.
class CSealCheck {
public:
    void Add(std::uint64_t seal, std::int64_t stored) {
        if (seal != static_cast<std::uint64_t>(stored))
            throw CJournalDamage(journalDamaged);
        m_sum += seal;
    }
    std::uint64_t Sum() const { return m_sum; }

private:
    std::uint64_t m_sum = 0;
};

void ReadSteps(const CSqlite& connection, CJournalContents& contents, CSealCheck& check) {
    CStatement row(connection, "SELECT id, heading, size, checksum, seal FROM steps ORDER BY id");
    while (row.Step()) {
        const std::int64_t id = row.Integer(0);
        const std::span<const std::uint8_t> heading = row.Bytes(1);
        const CStoredBody body{static_cast<std::uint64_t>(row.Integer(2)),
                               static_cast<std::uint32_t>(row.Integer(3))};
        check.Add(SealOf(id, heading, body), row.Integer(4));
        contents.steps.push_back({id, Copy(heading), heading.size() + body.size});
    }
}

void ReadMoves(const CSqlite& connection, CJournalContents& contents, CSealCheck& check) {
    CStatement row(connection, "SELECT sequence, step, forward, seal FROM moves ORDER BY sequence");
    while (row.Step()) {
        const CJournalMove move{row.Integer(0), row.Integer(1), row.Integer(2) != 0};
        check.Add(SealOf(move), row.Integer(3));
        contents.moves.push_back(move);
    }
}

void ReadNotes(const CSqlite& connection, CJournalContents& contents, CSealCheck& check) {
    CStatement row(connection, "SELECT name, value, seal FROM notes ORDER BY name");
    while (row.Step()) {
        const std::string_view name = row.Text(0);
        const std::span<const std::uint8_t> value = row.Bytes(1);
        check.Add(SealOf(name, value), row.Integer(2));
        contents.notes.insert_or_assign(std::string(name), Copy(value));
    }
}

} // namespace

std::uint64_t ReadContents(const CSqlite& connection, CJournalContents& contents) {
    CSealCheck check;
    ReadSteps(connection, contents, check);
    ReadMoves(connection, contents, check);
    ReadNotes(connection, contents, check);
    CStatement total(connection, "SELECT seals FROM total");
    if (!total.Step() || static_cast<std::uint64_t>(total.Integer(0)) != check.Sum())
        throw CJournalDamage(journalDamaged);
    return check.Sum();
}

} // namespace velmor
