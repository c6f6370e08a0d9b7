#pragma once

#include "platform/files/Files.h"

#include <filesystem>
#include <string>
#include <unistd.h>

namespace velmor::fuzz {

/// A folder for what one input leaves, in memory where there is such a place.
class CMemoryFolder {
public:
    CMemoryFolder() {
        const Path memory = "/dev/shm";
        m_path = (FolderExists(memory) ? memory : std::filesystem::temp_directory_path()) /
                 ("velmor-fuzz-" + std::to_string(::getpid()));
        std::filesystem::create_directory(m_path);
    }
    CMemoryFolder(const CMemoryFolder&) = delete;
    CMemoryFolder& operator=(const CMemoryFolder&) = delete;
    ~CMemoryFolder() { std::filesystem::remove_all(m_path); }

    Path operator/(const char* name) const { return m_path / name; }

private:
    Path m_path;
};

} // namespace velmor::fuzz
