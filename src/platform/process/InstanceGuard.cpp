#include "platform/process/InstanceGuard.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#include <utility>

namespace velmor {

std::optional<CInstanceGuard> CInstanceGuard::Acquire(const Path& folder) {
    static_cast<void>(CreateFolder(folder)); // without it no lock can be had, below
    const Path file = folder / "personal_velmor";
    CInstanceGuard guard(::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    if (guard.m_descriptor >= 0 && ::flock(guard.m_descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        return std::nullopt;
    return guard;
}

CInstanceGuard::CInstanceGuard(CInstanceGuard&& other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, -1)) {}

CInstanceGuard& CInstanceGuard::operator=(CInstanceGuard&& other) noexcept {
    std::swap(m_descriptor, other.m_descriptor);
    return *this;
}

// The file stays: removing it would let two later processes lock two different files of the one name.
CInstanceGuard::~CInstanceGuard() {
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

} // namespace velmor
