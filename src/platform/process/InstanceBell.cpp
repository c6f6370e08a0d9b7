#include "platform/process/InstanceBell.h"

#include <array>
#include <cstring>
#include <optional>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace velmor {

namespace {

constexpr std::size_t longestRing = 5000; // a path and a byte
constexpr int kind = SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK;

Path SocketFile(const Path& folder) {
    return folder / "personal_velmor.bell";
}

// Nothing for a path that is longer than a socket's name may be.
std::optional<sockaddr_un> AddressOf(const Path& file) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string& name = file.native();
    if (name.size() >= sizeof address.sun_path)
        return std::nullopt;
    std::memcpy(address.sun_path, name.data(), name.size());
    return address;
}

const sockaddr* Generic(const sockaddr_un& address) {
    return reinterpret_cast<const sockaddr*>(&address);
}

} // namespace

CInstanceBell::CInstanceBell(const Path& folder) : m_file(SocketFile(folder)) {
    const std::optional<sockaddr_un> address = AddressOf(m_file);
    if (!address)
        return;
    ::unlink(m_file.c_str()); // left by one that was killed
    m_descriptor = ::socket(AF_UNIX, kind, 0);
    if (m_descriptor >= 0 && ::bind(m_descriptor, Generic(*address), sizeof *address) != 0) {
        ::close(m_descriptor);
        m_descriptor = -1;
    }
}

CInstanceBell::~CInstanceBell() {
    if (m_descriptor < 0)
        return;
    ::close(m_descriptor);
    ::unlink(m_file.c_str());
}

std::vector<std::string> CInstanceBell::TakeRings() {
    std::vector<std::string> rings;
    std::array<char, longestRing> ring{};
    while (m_descriptor >= 0) {
        const ssize_t length = ::recv(m_descriptor, ring.data(), ring.size(), 0);
        if (length < 0)
            break;
        rings.emplace_back(ring.data(), static_cast<std::size_t>(length)).erase(0, 1);
    }
    return rings;
}

bool CInstanceBell::Ring(const Path& folder, const std::string& message) {
    const std::optional<sockaddr_un> address = AddressOf(SocketFile(folder));
    const std::string ring = "!" + message; // a byte rings where nothing is said
    const int descriptor = address && ring.size() <= longestRing ? ::socket(AF_UNIX, kind, 0) : -1;
    if (descriptor < 0)
        return false;
    const bool rung =
        ::sendto(descriptor, ring.data(), ring.size(), MSG_NOSIGNAL, Generic(*address), sizeof *address) > 0;
    ::close(descriptor);
    return rung;
}

} // namespace velmor
