#include "platform/journal/Sqlite.h"

#include <cerrno>
#include <sqlite3.h>
#include <system_error>

namespace velmor {

namespace {

constexpr int kindMask = 0xff; // the rest of a code says more about it

// What the system said last of the file to which a commit writes; a failed commit is not told the usual way.
int LastErrorOf(sqlite3* connection) {
    if (const int error = sqlite3_system_errno(connection); error != 0)
        return error;
    sqlite3_file* file = nullptr;
    sqlite3_file_control(connection, "main", SQLITE_FCNTL_JOURNAL_POINTER, &file);
    int error = 0;
    if (file != nullptr && file->pMethods != nullptr)
        file->pMethods->xFileControl(file, SQLITE_FCNTL_LAST_ERRNO, &error);
    return error;
}

} // namespace

CSqliteFault::CSqliteFault(sqlite3* connection, int code) : m_code(code) {
    const int kind = m_code & kindMask;
    if (kind == SQLITE_FULL)
        m_systemError = ENOSPC;
    else if (connection != nullptr && (kind == SQLITE_IOERR || kind == SQLITE_CANTOPEN))
        m_systemError = LastErrorOf(connection);
}

const char* CSqliteFault::what() const noexcept {
    return sqlite3_errstr(m_code);
}

bool CSqliteFault::IsBusy() const {
    return (m_code & kindMask) == SQLITE_BUSY;
}

bool CSqliteFault::IsDamaged() const {
    const int kind = m_code & kindMask;
    // What is missing at the end of a file, or in its tables, is damage as well.
    return kind == SQLITE_CORRUPT || kind == SQLITE_NOTADB || kind == SQLITE_ERROR || kind == SQLITE_SCHEMA ||
           m_code == SQLITE_IOERR_SHORT_READ;
}

std::string CSqliteFault::Reason() const {
    return m_systemError != 0 ? std::generic_category().message(m_systemError) : what();
}

void CSqlite::CCloser::operator()(sqlite3* connection) const {
    sqlite3_close_v2(connection);
}

CSqlite::CSqlite(const char* name, int flags) {
    sqlite3* connection = nullptr;
    // One thread at a time is in it: its users see to that.
    const int code = sqlite3_open_v2(name, &connection, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    m_connection.reset(connection);
    if (code != SQLITE_OK)
        throw CSqliteFault(connection, code);
    sqlite3_extended_result_codes(connection, 1);
}

CSqlite::CSqlite(const Path& file) : CSqlite(file.c_str(), SQLITE_OPEN_READWRITE) {}

CSqlite CSqlite::InMemory() {
    return {":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_MEMORY};
}

void CSqlite::Execute(const char* statements) {
    if (const int code = sqlite3_exec(Get(), statements, nullptr, nullptr, nullptr); code != SQLITE_OK)
        throw CSqliteFault(Get(), code);
}

void CStatement::CFinalizer::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

CStatement::CStatement(const CSqlite& connection, std::string_view text) {
    sqlite3_stmt* statement = nullptr;
    const int code = sqlite3_prepare_v3(connection.Get(), text.data(), static_cast<int>(text.size()),
                                        SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
    m_statement.reset(statement);
    if (code != SQLITE_OK)
        throw CSqliteFault(connection.Get(), code);
}

void CStatement::Reset() {
    sqlite3_reset(m_statement.get()); // tells once more of a fault that Step() has thrown
}

bool CStatement::Step() {
    const int code = sqlite3_step(m_statement.get());
    if (code == SQLITE_ROW)
        return true;
    const int ended = sqlite3_reset(m_statement.get()); // so that no statement at its end holds up a checkpoint
    Check(code == SQLITE_DONE ? ended : code);
    return false;
}

std::int64_t CStatement::Integer(int column) const {
    return sqlite3_column_int64(m_statement.get(), column);
}

std::span<const std::uint8_t> CStatement::Bytes(int column) const {
    const void* bytes = sqlite3_column_blob(m_statement.get(), column);
    const int size = sqlite3_column_bytes(m_statement.get(), column);
    if (bytes == nullptr && sqlite3_errcode(sqlite3_db_handle(m_statement.get())) == SQLITE_NOMEM)
        throw std::bad_alloc();
    return {static_cast<const std::uint8_t*>(bytes), bytes != nullptr ? static_cast<std::size_t>(size) : 0};
}

std::string_view CStatement::Text(int column) const {
    const std::span<const std::uint8_t> bytes = Bytes(column);
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

void CStatement::Bind(int index, std::int64_t value) {
    Check(sqlite3_bind_int64(m_statement.get(), index, value));
}

void CStatement::Bind(int index, std::span<const std::uint8_t> bytes) {
    // Bytes that are nowhere would be no value at all.
    Check(bytes.empty() ? sqlite3_bind_zeroblob(m_statement.get(), index, 0)
                        : sqlite3_bind_blob64(m_statement.get(), index, bytes.data(), bytes.size(), SQLITE_STATIC));
}

void CStatement::Bind(int index, std::string_view text) {
    Check(sqlite3_bind_text64(m_statement.get(), index, text.empty() ? "" : text.data(), text.size(), SQLITE_STATIC,
                              SQLITE_UTF8));
}

void CStatement::Check(int code) const {
    if (code == SQLITE_NOMEM)
        throw std::bad_alloc();
    if (code != SQLITE_OK)
        throw CSqliteFault(sqlite3_db_handle(m_statement.get()), code);
}

} // namespace velmor
