#include "platform/journal/JournalConnection.h"

#include "platform/journal/JournalContents.h"
#include "platform/journal/JournalFormat.h"
#include "platform/journal/WriteAheadFile.h"

#include <algorithm>
#include <array>
#include <sqlite3.h>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace velmor {

namespace {

constexpr const char* ofNewerVersion = "The journal is of a newer version of the program.";

/// The first bytes of a database file, and where in them it says what.
constexpr std::size_t headerSize = 100;
using Header = std::array<std::uint8_t, headerSize>;
constexpr std::string_view magic("SQLite format 3\0", 16);
constexpr std::size_t versionAt = 60, applicationAt = 68;

std::int64_t NumberAt(const Header& header, std::size_t position) {
    std::uint32_t number = 0;
    for (std::size_t byte = 0; byte < sizeof number; ++byte)
        number = number << 8 | header[position + byte];
    return number;
}

void CheckHeader(const Header& header) {
    if (!std::equal(magic.begin(), magic.end(), header.begin()) ||
        NumberAt(header, applicationAt) != journalApplicationId)
        throw CJournalDamage(noJournal);
    if (NumberAt(header, versionAt) > journalVersion)
        throw CJournalRefusal(ofNewerVersion);
    if (header[writeFormatAt] != writeAheadFormat || header[readFormatAt] != writeAheadFormat)
        throw CJournalDamage(journalDamaged);
}

// By the handle that the connection has: to open the file a second time, and close it, would take away the locks
// that this process has on it.
void CheckHeaderOf(const CSqlite& connection) {
    sqlite3_file* file = nullptr;
    sqlite3_file_control(connection.Get(), "main", SQLITE_FCNTL_FILE_POINTER, &file);
    if (const int code = file->pMethods->xLock(file, SQLITE_LOCK_SHARED); code != SQLITE_OK)
        throw CSqliteFault(connection.Get(), code);
    Header header{};
    const int code = file->pMethods->xRead(file, header.data(), static_cast<int>(header.size()), 0);
    file->pMethods->xUnlock(file, SQLITE_LOCK_NONE);
    if (code != SQLITE_OK && code != SQLITE_IOERR_SHORT_READ)
        throw CSqliteFault(connection.Get(), code);
    CheckHeader(header);
}

std::int64_t NumberOf(const CSqlite& connection, const char* question) {
    CStatement statement(connection, question);
    return statement.Step() ? statement.Integer(0) : 0;
}

// What tables, indexes and the like there are, as they were made but for blanks.
std::vector<std::string> TablesOf(const CSqlite& connection) {
    std::vector<std::string> tables;
    CStatement statement(connection, "SELECT coalesce(sql, name) FROM sqlite_schema ORDER BY name");
    while (statement.Step())
        std::erase_if(tables.emplace_back(statement.Text(0)),
                      [](char letter) { return letter == ' ' || letter == '\n'; });
    return tables;
}

void Distrust(CSqlite& connection) {
    sqlite3* const handle = connection.Get();
    sqlite3_db_config(handle, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    sqlite3_limit(handle, SQLITE_LIMIT_LENGTH, 1 << 30);
    sqlite3_limit(handle, SQLITE_LIMIT_ATTACHED, 0);
    connection.Execute("PRAGMA trusted_schema = OFF; PRAGMA cell_size_check = ON; PRAGMA mmap_size = 0;"
                       "PRAGMA locking_mode = EXCLUSIVE; PRAGMA temp_store = MEMORY");
}

void CheckTables(const CSqlite& connection) {
    if (NumberOf(connection, "PRAGMA application_id") != journalApplicationId)
        throw CJournalDamage(journalDamaged);
    // Once more, since what stands beside the file may be newer than its header.
    if (NumberOf(connection, "PRAGMA user_version") > journalVersion)
        throw CJournalRefusal(ofNewerVersion);
    CSqlite expected = CSqlite::InMemory();
    expected.Execute(journalLayout);
    if (TablesOf(connection) != TablesOf(expected))
        throw CJournalDamage(journalDamaged);
}

void CheckThatItCanBeWritten(const CSqlite& connection, const Path& file) {
    if (sqlite3_db_readonly(connection.Get(), "main") != 0 || ::access(file.parent_path().c_str(), W_OK) != 0)
        throw CJournalRefusal("The journal could not be opened: write protected.");
    // SQLite would change the file by what stands there, and ours never has one.
    if (FileExists(file.string() + "-journal"))
        throw CJournalDamage(journalDamaged);
}

} // namespace

CSqlite ConnectToJournal(const Path& file, CJournalContents& contents, std::uint64_t& seals) {
    CSqlite connection(file);
    CheckHeaderOf(connection);
    CheckThatItCanBeWritten(connection, file);
    Distrust(connection);
    const Path writeAhead = WriteAheadPath(file);
    const bool wasThere = FileExists(writeAhead);
    // SQLite makes that file as it reads. It goes while the lock is still ours, or it could be another program's.
    const auto leaveNoTrace = [&] { return wasThere || RemoveFile(writeAhead); };
    try {
        CheckTables(connection);
        seals = ReadContents(connection, contents);
    } catch (const CSqliteFault& fault) {
        if (!fault.IsBusy())
            leaveNoTrace();
        throw;
    } catch (...) {
        leaveNoTrace();
        throw;
    }
    sqlite3_db_config(connection.Get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 0, nullptr);
    return connection;
}

} // namespace velmor
