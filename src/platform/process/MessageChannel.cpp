#include "platform/process/MessageChannel.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace velmor {

namespace {

constexpr std::size_t headerBytes = 5;         // the kind, and the number of bytes that follow
constexpr std::size_t mostBytes = 700'000'000; // more than the largest image
constexpr std::size_t pieceBytes = 1 << 18;

std::uint32_t LengthOf(const std::uint8_t* header) {
    std::uint32_t length = 0;
    std::memcpy(&length, header + 1, sizeof length); // both ends are of one machine
    return length;
}

} // namespace

CMessageChannel::CMessageChannel(CMessageChannel&& other) noexcept {
    *this = std::move(other);
}

CMessageChannel& CMessageChannel::operator=(CMessageChannel&& other) noexcept {
    std::swap(m_descriptor, other.m_descriptor);
    std::swap(m_received, other.m_received);
    std::swap(m_count, other.m_count);
    return *this;
}

void CMessageChannel::Close() {
    if (m_descriptor >= 0)
        ::close(m_descriptor);
    m_descriptor = -1;
    m_received.clear();
    m_count = 0;
}

bool CMessageChannel::SendBytes(const std::uint8_t* bytes, std::size_t count) {
    while (count > 0) {
        const ssize_t sent = ::send(m_descriptor, bytes, count, MSG_NOSIGNAL);
        if (sent < 0 && errno == EINTR)
            continue;
        if (sent <= 0)
            return false;
        bytes += sent;
        count -= static_cast<std::size_t>(sent);
    }
    return true;
}

bool CMessageChannel::Send(const CChannelMessage& message) {
    std::uint8_t header[headerBytes] = {message.kind};
    const auto length = static_cast<std::uint32_t>(message.bytes.size());
    std::memcpy(header + 1, &length, sizeof length);
    return message.bytes.size() <= mostBytes && SendBytes(header, sizeof header) &&
           SendBytes(message.bytes.data(), message.bytes.size());
}

bool CMessageChannel::Take(CChannelMessage& message) {
    if (m_count < headerBytes || m_count < headerBytes + LengthOf(m_received.data()))
        return false;
    const std::size_t whole = headerBytes + LengthOf(m_received.data());
    message.kind = m_received[0];
    const auto begin = m_received.begin();
    const auto end = begin + static_cast<std::ptrdiff_t>(whole);
    if (m_count == whole) { // as a rule; a page is large, and is not copied
        m_received.resize(whole);
        m_received.erase(begin, begin + headerBytes);
        message.bytes = std::exchange(m_received, {});
    } else {
        message.bytes.assign(begin + headerBytes, end);
        m_received.erase(begin, end);
    }
    m_count -= whole;
    return true;
}

CMessageChannel::Result CMessageChannel::Receive(CChannelMessage& message, int milliseconds) {
    while (!Take(message)) {
        pollfd waiting{m_descriptor, POLLIN, 0};
        const int ready = ::poll(&waiting, 1, milliseconds);
        if (ready == 0 || (ready < 0 && errno == EINTR))
            return Result::Nothing;
        // Memory grows with what has come, not with what is said to come.
        m_received.resize(m_count + pieceBytes);
        const ssize_t got = ready < 0 ? -1 : ::recv(m_descriptor, m_received.data() + m_count, pieceBytes, 0);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return Result::Closed;
        m_count += static_cast<std::size_t>(got);
        if (m_count >= headerBytes && LengthOf(m_received.data()) > mostBytes)
            return Result::Closed;
    }
    return Result::Message;
}

} // namespace velmor
