#pragma once

#include "platform/ffmpeg/Ffmpeg.h"
#include "platform/movie/MovieLibrary.h"

namespace velmor {

/// Lets FFmpeg write into the file of a movie, going back as it likes. Does not move: FFmpeg keeps its address.
class CMovieFile {
public:
    CMovieFile() = default;
    CMovieFile(const CMovieFile&) = delete;
    CMovieFile& operator=(const CMovieFile&) = delete;
    ~CMovieFile();

    /// False without memory. `file` outlives this.
    [[nodiscard]] bool Open(IMovieBytes& file);
    AVIOContext* Stream() { return m_stream; }
    /// Where FFmpeg finds what has been written so far.
    std::string Address() const;
    /// Whether everything written up to now has reached the file.
    bool IsSound();
    /// Hands on what FFmpeg still holds. False when some of the movie has not reached the file.
    [[nodiscard]] bool Finish();

private:
    [[nodiscard]] bool Write(std::span<const std::uint8_t> bytes);
    std::int64_t Seek(std::int64_t offset, int whence);

    IMovieBytes* m_file = nullptr;
    std::uint64_t m_position = 0;
    AVIOContext* m_stream = nullptr;
};

} // namespace velmor
