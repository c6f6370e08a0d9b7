#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <span>
#include <string>
#include <unistd.h>
#include <vector>

namespace velmor::testing {

/// A folder of one test's own, gone when the object is.
class CTempFolder {
public:
    CTempFolder() {
        static std::atomic<int> next{0};
        m_path = std::filesystem::temp_directory_path() /
                 ("velmor-test-" + std::to_string(::getpid()) + "-" + std::to_string(next++));
        std::filesystem::create_directories(m_path);
    }
    CTempFolder(const CTempFolder&) = delete;
    CTempFolder& operator=(const CTempFolder&) = delete;
    ~CTempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    const std::filesystem::path& Path() const { return m_path; }
    std::filesystem::path operator/(const std::string& name) const { return m_path / name; }

private:
    std::filesystem::path m_path;
};

inline std::vector<std::uint8_t> ReadBytes(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

inline void WriteBytes(const std::filesystem::path& path, std::span<const std::uint8_t> bytes) {
    // Some file systems flush a file that replaces another to disk at once, which is slow; a new one they do not.
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

} // namespace velmor::testing
