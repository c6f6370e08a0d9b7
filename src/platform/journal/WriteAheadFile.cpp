#include "platform/journal/WriteAheadFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace velmor {

namespace {

[[noreturn]] void Fail() {
    throw std::system_error(errno, std::generic_category());
}

// Where the file system has no such thing for folders, there is nothing to wait for.
void SyncFolder(const Path& folder) {
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    ::fsync(descriptor);
    ::close(descriptor);
}

} // namespace

Path WriteAheadPath(const Path& journal) {
    return journal.string() + "-wal";
}

// Unlike the journal itself, the file bears no locks that opening and closing it could take away.
CWriteAheadFile::CWriteAheadFile(const Path& journal)
    : m_folder(journal.parent_path()), m_descriptor(::open(WriteAheadPath(journal).c_str(), O_RDONLY | O_CLOEXEC)) {
    if (m_descriptor < 0)
        Fail();
}

CWriteAheadFile::~CWriteAheadFile() {
    ::close(m_descriptor);
}

std::uint64_t CWriteAheadFile::Size() const {
    struct stat info {};
    return ::fstat(m_descriptor, &info) == 0 ? static_cast<std::uint64_t>(info.st_size) : 0;
}

void CWriteAheadFile::Sync() {
    if (::fdatasync(m_descriptor) != 0)
        Fail();
    if (!m_nameSynced)
        SyncFolder(m_folder);
    m_nameSynced = true;
}

} // namespace velmor
