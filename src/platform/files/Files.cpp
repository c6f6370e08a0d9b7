#include "platform/files/Files.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <new>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace velmor {

namespace {

namespace fs = std::filesystem;

class CDescriptor {
public:
    explicit CDescriptor(const Path& path)
        : m_descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {}
    CDescriptor(const CDescriptor&) = delete;
    CDescriptor& operator=(const CDescriptor&) = delete;
    ~CDescriptor() {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    int Get() const { return m_descriptor; }

private:
    int m_descriptor;
};

bool ReadAll(int descriptor, std::span<std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::read(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
    return true;
}

template<class Accept>
std::vector<std::string> ListNames(const Path& folder, Accept accept) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
        if (accept(*entry))
            names.push_back(entry->path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

/// The folders in a folder, or all the rest, sorted; a link is no folder, wherever it leads.
std::vector<Path> ContentsOf(const Path& folder, bool folders) {
    std::vector<Path> found;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        std::error_code unknown;
        if ((entry->symlink_status(unknown).type() == fs::file_type::directory) == folders)
            found.push_back(entry->path());
    }
    std::sort(found.begin(), found.end());
    return found;
}

} // namespace

Path PathOf(std::string_view utf8) {
    return Path(utf8);
}

std::string Utf8Of(const Path& path) {
    return path.string();
}

Path FolderOf(const Path& file) {
    return file.has_parent_path() ? file.parent_path() : Path(".");
}

std::optional<CFileBytes> ReadWholeFile(const Path& path, std::uint64_t mostBytes) {
    const CDescriptor file(path);
    struct stat info {};
    if (file.Get() < 0 || ::fstat(file.Get(), &info) != 0 || !S_ISREG(info.st_mode))
        return std::nullopt;
    const auto size = static_cast<std::uint64_t>(info.st_size);
    if (size > mostBytes)
        return std::nullopt;
    try {
        CFileBytes bytes(static_cast<std::size_t>(size));
        if (!ReadAll(file.Get(), bytes.Span()))
            return std::nullopt;
        return bytes;
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

std::optional<CFileIdentity> IdentifyFile(const Path& path) {
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0 || !S_ISREG(info.st_mode))
        return std::nullopt;
    return CFileIdentity{static_cast<std::int64_t>(info.st_mtim.tv_sec) * 1000000000 + info.st_mtim.tv_nsec,
                         static_cast<std::uint64_t>(info.st_size), static_cast<std::uint64_t>(info.st_ino),
                         static_cast<std::uint64_t>(info.st_dev)};
}

bool FileExists(const Path& path) {
    std::error_code error;
    return fs::is_regular_file(path, error);
}

bool FolderExists(const Path& path) {
    std::error_code error;
    return fs::is_directory(path, error);
}

bool CreateFolder(const Path& path) {
    std::error_code error;
    fs::create_directories(path, error);
    return FolderExists(path);
}

bool RemoveFile(const Path& path) {
    return ::unlink(path.c_str()) == 0;
}

bool RemoveFilesIn(const Path& folder, const std::function<void(const Path&)>& resists) {
    bool emptied = true;
    for (const Path& file : ContentsOf(folder, false)) {
        if (RemoveFile(file))
            continue;
        emptied = false;
        if (resists)
            resists(file);
    }
    return emptied;
}

int RemoveEmptyFolder(const Path& folder) {
    return std::remove(folder.c_str()) == 0 ? 0 : errno;
}

bool RemoveFolderTree(const Path& folder, const std::function<void(const Path&)>& resists) {
    bool emptied = RemoveFilesIn(folder, resists);
    for (const Path& inner : ContentsOf(folder, true))
        emptied = RemoveFolderTree(inner, resists) && emptied;
    if (!emptied)
        return false;
    const bool removed = RemoveEmptyFolder(folder) == 0;
    if (!removed && resists)
        resists(folder);
    return removed;
}

bool CopyFileIfAbsent(const Path& from, const Path& to) {
    std::error_code error;
    if (fs::exists(fs::symlink_status(to, error)))
        return false;
    const std::optional<CFileBytes> bytes = ReadWholeFile(from);
    return bytes && WriteFileAtomically(to, bytes->Span());
}

void FlushFolder(const Path& folder) {
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    ::fsync(descriptor);
    ::close(descriptor);
}

bool MoveFile(const Path& from, const Path& to) {
    return ::rename(from.c_str(), to.c_str()) == 0;
}

bool MoveIfAbsent(const Path& from, const Path& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
        return true;
    if (errno != EINVAL && errno != ENOSYS)
        return false;
    // Not every file system can look and rename in one step.
    std::error_code error;
    return !fs::exists(fs::symlink_status(to, error)) && MoveFile(from, to);
}

std::vector<std::string> ListFolders(const Path& folder) {
    return ListNames(folder, [](const fs::directory_entry& entry) {
        std::error_code error;
        return entry.is_directory(error);
    });
}

std::vector<std::string> ListFiles(const Path& folder, std::string_view extension) {
    return ListNames(folder, [extension](const fs::directory_entry& entry) {
        std::error_code error;
        return entry.is_regular_file(error) &&
               (extension.empty() || entry.path().extension().string() == extension);
    });
}

} // namespace velmor
