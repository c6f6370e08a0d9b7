#include "platform/files/Files.h"
#include "platform/files/UnfinishedFiles.h"

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

// Makes the renaming itself durable.
void FlushFolderOf(const Path& path) {
    const Path folder = path.has_parent_path() ? path.parent_path() : Path(".");
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    ::fsync(descriptor);
    ::close(descriptor);
}

} // namespace

CAtomicFile::CAtomicFile(int descriptor, Path temporary, Path target)
    : m_descriptor(descriptor), m_temporary(std::move(temporary)), m_target(std::move(target)) {}

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
    const std::string name = UnfinishedFiles().AddFor(*target);
    const int descriptor = ::open(name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor < 0) {
        UnfinishedFiles().Remove(name);
        return std::nullopt;
    }
    if (replaces && ::fchmod(descriptor, old.st_mode & 07777) != 0) {
        // The replaced file's permissions could not be kept; the fresh file's are the next best.
    }
    return CAtomicFile(descriptor, name, *target);
}

CAtomicFile::CAtomicFile(CAtomicFile&& other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, -1)),
      m_failed(other.m_failed),
      m_size(other.m_size),
      m_temporary(std::move(other.m_temporary)),
      m_target(std::move(other.m_target)) {}

CAtomicFile& CAtomicFile::operator=(CAtomicFile&& other) noexcept {
    if (this != &other) {
        Discard();
        m_descriptor = std::exchange(other.m_descriptor, -1);
        m_failed = other.m_failed;
        m_size = other.m_size;
        m_temporary = std::move(other.m_temporary);
        m_target = std::move(other.m_target);
    }
    return *this;
}

CAtomicFile::~CAtomicFile() {
    Discard();
}

void CAtomicFile::Discard() {
    if (m_descriptor < 0)
        return;
    ::close(std::exchange(m_descriptor, -1));
    ::unlink(m_temporary.c_str());
    UnfinishedFiles().Remove(m_temporary.string());
}

bool CAtomicFile::Append(std::span<const std::uint8_t> bytes) {
    if (m_descriptor < 0 || m_failed)
        return false;
    m_failed = !WriteAll(m_descriptor, bytes);
    if (!m_failed)
        m_size += bytes.size();
    return !m_failed;
}

bool CAtomicFile::Overwrite(std::uint64_t offset, std::span<const std::uint8_t> bytes) {
    if (m_descriptor < 0 || m_failed || offset > m_size || bytes.size() > m_size - offset)
        return false;
    while (!bytes.empty()) {
        const ssize_t written = ::pwrite(m_descriptor, bytes.data(), bytes.size(), static_cast<off_t>(offset));
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
    if (m_descriptor < 0)
        return false;
    bool done = !m_failed && ::fsync(m_descriptor) == 0;
    done = ::close(std::exchange(m_descriptor, -1)) == 0 && done;
    done = done && ::rename(m_temporary.c_str(), m_target.c_str()) == 0;
    if (!done)
        ::unlink(m_temporary.c_str());
    UnfinishedFiles().Remove(m_temporary.string());
    if (done)
        FlushFolderOf(m_target);
    return done;
}

bool WriteFileAtomically(const Path& path, std::span<const std::uint8_t> bytes) {
    std::optional<CAtomicFile> file = CAtomicFile::Create(path);
    return file && file->Append(bytes) && file->Commit();
}

} // namespace velmor
