#pragma once

#include "app/demo/DemoSounds.h"
#include "app/demo/Landscape.h"
#include "platform/files/Files.h"

#include <optional>
#include <utility>

namespace velmor::demo {

/// A folder of this run's own for files on their way into the scene; it is removed with everything in it when the
/// object dies.
class CTemporaryFolder {
public:
    /// Nothing when no folder can be made. There is no object without a folder, whose files would otherwise end up
    /// in the folder that the program happens to run in.
    static std::optional<CTemporaryFolder> Make();
    CTemporaryFolder(CTemporaryFolder&& other) noexcept : m_path(std::exchange(other.m_path, {})) {}
    CTemporaryFolder& operator=(CTemporaryFolder&&) = delete;
    ~CTemporaryFolder();

    Path File(const std::string& name) const { return m_path / PathOf(name); }

private:
    explicit CTemporaryFolder(Path path) : m_path(std::move(path)) {}

    Path m_path; ///< empty in an object that was moved from
};

/// An uncompressed 24-bit Targa file, bottom row first. False when it cannot be written.
[[nodiscard]] bool WriteTarga(const Path& path, const CPainting& painting);
/// An 8-bit mono PCM wave file of soundRate samples per second. False when it cannot be written.
[[nodiscard]] bool WriteWave(const Path& path, const std::vector<std::uint8_t>& samples);

} // namespace velmor::demo
