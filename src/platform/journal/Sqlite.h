#pragma once

#include "platform/files/Files.h"

#include <concepts>
#include <cstdint>
#include <exception>
#include <memory>
#include <span>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace velmor {

/// What SQLite refused to do. Stays in this room.
class CSqliteFault : public std::exception {
public:
    CSqliteFault(sqlite3* connection, int code);

    const char* what() const noexcept override;
    bool IsBusy() const;    ///< another program has the file
    bool IsDamaged() const; ///< the file is not what SQLite wrote
    /// The system's words for it where it has some, otherwise SQLite's.
    std::string Reason() const;

private:
    int m_code;
    int m_systemError = 0;
};

/// A connection with a database, closed by the end of the object. For one thread at a time.
class CSqlite {
public:
    /// Opens a file that is there, to write in; nothing of it is changed before a statement asks for it.
    explicit CSqlite(const Path& file);
    static CSqlite InMemory();

    /// Runs statements that give no rows, or whose rows do not matter.
    void Execute(const char* statements);
    sqlite3* Get() const { return m_connection.get(); }

private:
    struct CCloser {
        void operator()(sqlite3* connection) const;
    };
    CSqlite(const char* name, int flags);

    std::unique_ptr<sqlite3, CCloser> m_connection;
};

/// A prepared statement. Its connection outlives it.
class CStatement {
public:
    CStatement(const CSqlite& connection, std::string_view text);

    /// Gives the parameters these values, first to last, and starts over. Bytes and texts stay the caller's and
    /// must be there while the statement runs.
    template<class... Values>
    CStatement& Start(const Values&... values) {
        Reset();
        int index = 0;
        (Bind(++index, values), ...);
        return *this;
    }
    /// Goes to the next row; false behind the last one.
    bool Step();
    /// Starts, and runs to the end.
    template<class... Values>
    void Run(const Values&... values) {
        Start(values...);
        while (Step()) {
        }
    }

    std::int64_t Integer(int column) const;
    /// Valid until the next step.
    std::span<const std::uint8_t> Bytes(int column) const;
    std::string_view Text(int column) const;

private:
    struct CFinalizer {
        void operator()(sqlite3_stmt* statement) const;
    };
    void Reset();
    void Bind(int index, std::int64_t value);
    void Bind(int index, std::span<const std::uint8_t> bytes);
    void Bind(int index, std::string_view text);
    void Check(int code) const;

    std::unique_ptr<sqlite3_stmt, CFinalizer> m_statement;
};

} // namespace velmor
