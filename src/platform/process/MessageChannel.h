#pragma once

#include <cstdint>
#include <vector>

namespace velmor {

/// What two processes tell each other: a kind, whose meaning they know, and bytes.
struct CChannelMessage {
    std::uint8_t kind = 0;
    std::vector<std::uint8_t> bytes;
};

/// One end of a connection between two processes.
class CMessageChannel {
public:
    enum class Result { Message, Nothing, Closed };

    CMessageChannel() = default;
    /// Owns the descriptor.
    explicit CMessageChannel(int descriptor) : m_descriptor(descriptor) {}
    CMessageChannel(CMessageChannel&& other) noexcept;
    CMessageChannel& operator=(CMessageChannel&& other) noexcept;
    ~CMessageChannel() { Close(); }

    bool IsOpen() const { return m_descriptor >= 0; }
    void Close();
    /// Waits until the other end has room. False when it is gone.
    [[nodiscard]] bool Send(const CChannelMessage& message);
    /// Waits for a whole message, but no longer than that many milliseconds for each of its pieces. `Closed` when
    /// the other end is gone or sends what cannot be.
    Result Receive(CChannelMessage& message, int milliseconds);

private:
    [[nodiscard]] bool SendBytes(const std::uint8_t* bytes, std::size_t count);
    [[nodiscard]] bool Take(CChannelMessage& message);

    int m_descriptor = -1;
    std::vector<std::uint8_t> m_received;
    std::size_t m_count = 0; ///< of the received bytes
};

} // namespace velmor
