#pragma once

#include <string>
#include <utility>

namespace velmor {

/// Outcome of an operation: done, or failed with the text that the caller shows. The text is UTF-8 and may be
/// empty when the failure is not worth a message (something cancelled).
class [[nodiscard]] CStatus {
public:
    CStatus() = default;
    static CStatus Failure(std::string message) { return CStatus(std::move(message)); }

    explicit operator bool() const { return !m_failed; }
    const std::string& Message() const { return m_message; }

private:
    explicit CStatus(std::string message) : m_failed(true), m_message(std::move(message)) {}

    bool m_failed = false;
    std::string m_message;
};

} // namespace velmor
