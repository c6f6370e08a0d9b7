#include "platform/files/AtomicFile.h"

#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace velmor {

namespace {

bool WriteAll(int descriptor, std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return true;
}

// Where a chain of links leads, to a file or to where there could be one. Nothing when it runs in a circle.
std::optional<Path> EndOfLinks(Path path) {
    constexpr int mostLinks = 40; // as many as the system follows
    for (int link = 0; link <= mostLinks; ++link) {
        std::error_code noLink;
        const Path next = std::filesystem::read_symlink(path, noLink);
        if (noLink)
            return path;
        path = path.parent_path() / next; // which is `next` alone where it is absolute
    }
    return std::nullopt;
}

} // namespace

CAtomicFile::CAtomicFile(CClaimedFile file, Path target) : m_file(std::move(file)), m_target(std::move(target)) {}

std::optional<CAtomicFile> CAtomicFile::Create(const Path& path) {
    const std::optional<Path> target = EndOfLinks(path);
    if (!target)
        return std::nullopt;
    struct stat old {};
    const bool replaces = ::stat(target->c_str(), &old) == 0;
    if (replaces && !S_ISREG(old.st_mode))
        return std::nullopt; // neither a folder nor a device may become a file
    if (replaces && ::access(target->c_str(), W_OK) != 0)
        return std::nullopt; // a file that may not be written may not be replaced either
    std::optional<CClaimedFile> file = CClaimedFile::Make(FolderOf(*target));
    if (!file)
        return std::nullopt;
    if (replaces && ::fchmod(file->Descriptor(), old.st_mode & 07777) != 0) {
        // The replaced file's permissions could not be kept; the fresh file's are the next best.
    }
    return CAtomicFile(std::move(*file), *target);
}

bool CAtomicFile::Append(std::span<const std::uint8_t> bytes) {
    if (m_file.Descriptor() < 0 || m_failed)
        return false;
    m_failed = !WriteAll(m_file.Descriptor(), bytes);
    if (!m_failed)
        m_size += bytes.size();
    return !m_failed;
}

bool CAtomicFile::Overwrite(std::uint64_t offset, std::span<const std::uint8_t> bytes) {
    if (m_file.Descriptor() < 0 || m_failed || offset > m_size || bytes.size() > m_size - offset)
        return false;
    while (!bytes.empty()) {
        const ssize_t written =
            ::pwrite(m_file.Descriptor(), bytes.data(), bytes.size(), static_cast<off_t>(offset));
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0) {
            m_failed = true;
            return false;
        }
        offset += static_cast<std::uint64_t>(written);
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return true;
}

bool CAtomicFile::Commit() {
    if (m_failed || m_file.Descriptor() < 0 || ::fsync(m_file.Descriptor()) != 0) {
        m_file.Remove();
        return false;
    }
    if (!m_file.MoveTo(m_target))
        return false;
    FlushFolder(FolderOf(m_target));
    return true;
}

bool WriteFileAtomically(const Path& path, std::span<const std::uint8_t> bytes) {
    std::optional<CAtomicFile> file = CAtomicFile::Create(path);
    return file && file->Append(bytes) && file->Commit();
}

void RemoveAbandonedBeside(const Path& file) {
    RemoveAbandoned(FolderOf(file));
    if (const std::optional<Path> target = EndOfLinks(file); target && FolderOf(*target) != FolderOf(file))
        RemoveAbandoned(FolderOf(*target));
}

} // namespace velmor
