#pragma once

#include "platform/files/Files.h"

#include <cstdint>

namespace velmor {

class CArchiveReader;
class CArchiveWriter;

/// What tells later whether a file is still the one that it was. Of a file that is not there nothing is set.
struct CFileStamp {
    bool exists = false;
    std::int64_t modifiedNanoseconds = 0;
    std::uint64_t size = 0;
    std::uint64_t inode = 0;
    std::uint64_t hash = 0; ///< of its contents

    /// Reads the whole file.
    static CFileStamp Of(const Path& file);
    /// Whether the file is the one of the stamp: by its time, size and number, otherwise (on file systems that give
    /// out new numbers, or for a copy that was put back) by its contents.
    bool IsOf(const Path& file) const;

    void Write(CArchiveWriter& writer) const;
    static CFileStamp Read(CArchiveReader& reader);
};

} // namespace velmor
