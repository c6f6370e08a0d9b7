#pragma once

#include "platform/files/Files.h"
#include "platform/movie/Ffmpeg.h"

#include <optional>

namespace velmor {

/// Lets FFmpeg write into a CAtomicFile, going back as it likes. Does not move: FFmpeg keeps its address.
class CMovieFile {
public:
    CMovieFile() = default;
    CMovieFile(const CMovieFile&) = delete;
    CMovieFile& operator=(const CMovieFile&) = delete;
    ~CMovieFile();

    /// False when the file cannot be made. Without a Commit() nothing appears under its name.
    [[nodiscard]] bool Create(const Path& path);
    AVIOContext* Stream() { return m_stream; }
    /// Where FFmpeg finds what has been written so far.
    std::string Address() const;
    /// Whether everything written up to now has reached the file.
    bool IsSound();
    [[nodiscard]] bool Commit();

private:
    [[nodiscard]] bool Write(std::span<const std::uint8_t> bytes);
    std::int64_t Seek(std::int64_t offset, int whence);

    std::optional<CAtomicFile> m_file;
    std::uint64_t m_position = 0;
    AVIOContext* m_stream = nullptr;
};

} // namespace velmor
