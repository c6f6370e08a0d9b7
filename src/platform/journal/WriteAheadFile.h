#pragma once

#include "platform/files/Files.h"

#include <cstdint>

namespace velmor {

/// Where SQLite keeps what has been written to a journal lately.
Path WriteAheadPath(const Path& journal);

/// That file, seen from outside: how large it is, and whether it is on the disk.
class CWriteAheadFile {
public:
    /// Throws std::system_error, as Sync() does.
    explicit CWriteAheadFile(const Path& journal);
    CWriteAheadFile(const CWriteAheadFile&) = delete;
    CWriteAheadFile& operator=(const CWriteAheadFile&) = delete;
    ~CWriteAheadFile();

    std::uint64_t Size() const;
    /// Waits until what was written is on the disk; with the first bytes SQLite itself has waited for the names of
    /// both files.
    void Sync();

private:
    int m_descriptor;
};

} // namespace velmor
