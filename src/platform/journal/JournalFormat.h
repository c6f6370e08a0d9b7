#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>

namespace velmor {

/// Why a file is not opened as a journal, in words for the user. Stays in this room.
class CJournalRefusal : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The file is none that anybody could read.
class CJournalDamage : public CJournalRefusal {
public:
    using CJournalRefusal::CJournalRefusal;
};

inline constexpr const char* journalDamaged = "The journal is damaged.";
inline constexpr const char* noJournal = "The file is no journal.";

inline constexpr std::int64_t journalApplicationId = 0x56656c4a;
inline constexpr std::int64_t journalVersion = 1;

/// Makes what stands in a new journal. Bodies have a table of their own, so that nothing else is slowed by their
/// size. `total` has one row, with the sum of all seals.
inline constexpr const char* journalLayout = R"(
    PRAGMA application_id = 0x56656c4a;
    PRAGMA user_version = 1;
    CREATE TABLE steps(
        id INTEGER PRIMARY KEY, heading BLOB NOT NULL, size INTEGER NOT NULL, checksum INTEGER NOT NULL,
        seal INTEGER NOT NULL) STRICT;
    CREATE TABLE bodies(id INTEGER PRIMARY KEY, body BLOB NOT NULL) STRICT;
    CREATE TABLE moves(
        sequence INTEGER PRIMARY KEY, step INTEGER NOT NULL, forward INTEGER NOT NULL, seal INTEGER NOT NULL) STRICT;
    CREATE INDEX moves_of_step ON moves(step);
    CREATE TABLE notes(name TEXT PRIMARY KEY, value BLOB NOT NULL, seal INTEGER NOT NULL) STRICT, WITHOUT ROWID;
    CREATE TABLE total(seals INTEGER NOT NULL) STRICT;
    INSERT INTO total VALUES(0);
)";

/// Where the header of a database says how it is to be written and read, and that both are done by writing ahead.
inline constexpr std::size_t writeFormatAt = 18, readFormatAt = 19;
inline constexpr std::uint8_t writeAheadFormat = 2;

} // namespace velmor
