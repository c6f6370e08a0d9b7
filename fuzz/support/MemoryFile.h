#pragma once

#include "platform/files/Files.h"

#include <cstdint>
#include <span>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace velmor::fuzz {

/// A file in memory, for readers that take a path. It must not be written to through the path.
class CMemoryFile {
public:
    explicit CMemoryFile(std::span<const std::uint8_t> bytes) : m_descriptor(::memfd_create("input", MFD_CLOEXEC)) {
        while (!bytes.empty()) {
            const ssize_t written = ::write(m_descriptor, bytes.data(), bytes.size());
            if (written <= 0)
                break;
            bytes = bytes.subspan(static_cast<std::size_t>(written));
        }
    }
    CMemoryFile(const CMemoryFile&) = delete;
    CMemoryFile& operator=(const CMemoryFile&) = delete;
    ~CMemoryFile() { ::close(m_descriptor); }

    Path File() const { return "/proc/self/fd/" + std::to_string(m_descriptor); }

private:
    int m_descriptor;
};

} // namespace velmor::fuzz
