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

} // namespace

Path WriteAheadPath(const Path& journal) {
    return journal.string() + "-wal";
}

// Unlike the journal itself, the file bears no locks that opening and closing it could take away.
CWriteAheadFile::CWriteAheadFile(const Path& journal)
    : m_descriptor(::open(WriteAheadPath(journal).c_str(), O_RDONLY | O_CLOEXEC)) {
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
}

} // namespace velmor
