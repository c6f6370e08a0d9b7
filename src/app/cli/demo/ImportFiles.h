#pragma once

#include "app/cli/demo/DemoSounds.h"
#include "app/cli/demo/Landscape.h"
#include "platform/Files.h"

namespace velmor::demo {

/// A folder of this run's own for files on their way into the scene; it is removed with everything in it when the
/// object dies.
class CTemporaryFolder {
public:
    CTemporaryFolder();
    CTemporaryFolder(const CTemporaryFolder&) = delete;
    CTemporaryFolder& operator=(const CTemporaryFolder&) = delete;
    ~CTemporaryFolder();

    /// False when no folder could be made.
    bool IsMade() const { return !m_path.empty(); }
    Path File(const std::string& name) const { return m_path / PathOf(name); }

private:
    Path m_path;
};

/// An uncompressed 24-bit Targa file, bottom row first. False when it cannot be written.
bool WriteTarga(const Path& path, const CPainting& painting);
/// An 8-bit mono PCM wave file of soundRate samples per second. False when it cannot be written.
bool WriteWave(const Path& path, const std::vector<std::uint8_t>& samples);

} // namespace velmor::demo
