#pragma once

#include "platform/files/ClaimedFile.h"

namespace velmor {

/// A file that appears under its name only when it is complete. Until Commit() the bytes stand in a temporary file
/// beside the target; destroying the object without Commit() removes that file.
class CAtomicFile {
public:
    /// Follows links from `path` to the target. Nothing when they run in a circle, when something other than a file
    /// is there, or when the temporary file cannot be created.
    static std::optional<CAtomicFile> Create(const Path& path);

    /// Appends at the end. After a failure every further call fails.
    [[nodiscard]] bool Append(std::span<const std::uint8_t> bytes);
    /// Overwrites bytes that were appended before.
    [[nodiscard]] bool Overwrite(std::uint64_t offset, std::span<const std::uint8_t> bytes);
    /// Number of bytes appended so far.
    std::uint64_t Size() const { return m_size; }
    /// Where the bytes stand until Commit(), for who has to read them back.
    const Path& Temporary() const { return m_file.Name(); }
    /// Flushes to disk and renames over the target.
    [[nodiscard]] bool Commit();

private:
    CAtomicFile(CClaimedFile file, Path target);

    CClaimedFile m_file;
    bool m_failed = false;
    std::uint64_t m_size = 0;
    Path m_target;
};

/// Removes what programs that are gone have left where they wrote to this file: beside it and, where it is a link,
/// beside what it leads to. See RemoveAbandoned().
void RemoveAbandonedBeside(const Path& file);

} // namespace velmor
