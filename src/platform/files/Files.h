#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velmor {

using Path = std::filesystem::path;

/// The bytes of a file, in memory that is not cleared first.
class CFileBytes {
public:
    CFileBytes() = default;
    explicit CFileBytes(std::size_t size)
        : m_bytes(std::make_unique_for_overwrite<std::uint8_t[]>(size)), m_size(size) {}

    std::span<std::uint8_t> Span() { return {m_bytes.get(), m_size}; }
    std::span<const std::uint8_t> Span() const { return {m_bytes.get(), m_size}; }
    std::size_t Size() const { return m_size; }

private:
    std::unique_ptr<std::uint8_t[]> m_bytes;
    std::size_t m_size = 0;
};

/// What tells one state of a file from another without reading it.
struct CFileIdentity {
    std::int64_t modifiedNanoseconds = 0;
    std::uint64_t size = 0;
    std::uint64_t inode = 0;
    std::uint64_t device = 0;

    bool operator==(const CFileIdentity&) const = default;
};

/// The path of a name that is kept as UTF-8, and back.
Path PathOf(std::string_view utf8);
std::string Utf8Of(const Path& path);
/// The folder that a file is in, "." for a name alone.
Path FolderOf(const Path& file);

/// Reads a whole regular file. Nothing when it cannot be opened or read or is longer than `mostBytes`; memory is
/// taken only for bytes that the file really has.
std::optional<CFileBytes> ReadWholeFile(const Path& path, std::uint64_t mostBytes = std::uint64_t{1} << 34);

/// Nothing when the file does not exist or is not a regular file.
std::optional<CFileIdentity> IdentifyFile(const Path& path);

/// Replaces a file by `bytes`: whole, to a temporary file beside it, flushed to disk, renamed over it. A link
/// stays, and the file that it leads to is replaced or made. On failure the old file is untouched and the temporary
/// one is gone.
[[nodiscard]] bool WriteFileAtomically(const Path& path, std::span<const std::uint8_t> bytes);

/// Removes the temporary files of every CAtomicFile still open. For the moment when an interrupt ends the process;
/// uses only what a signal handler may use.
void DiscardUnfinishedFiles() noexcept;

bool FileExists(const Path& path);
bool FolderExists(const Path& path);
/// Makes one folder (and the folders above it). True also when it exists already.
[[nodiscard]] bool CreateFolder(const Path& path);
[[nodiscard]] bool RemoveFile(const Path& path);
/// Removes what is in a folder except the folders. Links are removed, never followed. What cannot be removed is
/// told to `resists`, if there is one, and stays; false then.
[[nodiscard]] bool RemoveFilesIn(const Path& folder, const std::function<void(const Path&)>& resists = {});
/// Removes an empty folder: 0, or the system's error number.
int RemoveEmptyFolder(const Path& folder);
/// Removes a folder with all it holds, as RemoveFilesIn() does; a folder in which something stays, stays as well.
[[nodiscard]] bool RemoveFolderTree(const Path& folder, const std::function<void(const Path&)>& resists = {});
/// Copies a file; fails when the destination exists. A failed copy leaves nothing behind.
[[nodiscard]] bool CopyFileIfAbsent(const Path& from, const Path& to);
[[nodiscard]] bool MoveFile(const Path& from, const Path& to);
/// Moves a file or folder; fails when something is there.
[[nodiscard]] bool MoveIfAbsent(const Path& from, const Path& to);
/// Has what was made and moved in a folder reach the disk.
void FlushFolder(const Path& folder);

/// Names (without directory) of the folders or of the files whose extension is `extension` (".bit"; empty: all),
/// sorted by their bytes. Empty when the folder cannot be read.
std::vector<std::string> ListFolders(const Path& folder);
std::vector<std::string> ListFiles(const Path& folder, std::string_view extension);

} // namespace velmor
