#pragma once

#include "platform/ffmpeg/Ffmpeg.h"
#include "platform/movie/AviReader.h"

#include <cstdint>
#include <fstream>
#include <span>
#include <string>

namespace velmor {

/// A file that FFmpeg reads the sound of: from an offset on, by calls of ours, and with those readers alone that do
/// not open other files. Does not move: FFmpeg keeps its address.
class CSoundFileInput {
public:
    CSoundFileInput() = default;
    CSoundFileInput(const CSoundFileInput&) = delete;
    CSoundFileInput& operator=(const CSoundFileInput&) = delete;
    ~CSoundFileInput();

    /// Finds out what is in the file, and its sound that is most likely meant.
    MovieError Open(const std::string& file, std::uint64_t offset);
    AVFormatContext& Format() { return *m_format; }
    AVStream& Stream() { return *m_format->streams[m_stream]; }
    /// Whether there are pictures, a cover excepted.
    bool HasVideo() const;
    /// The next packet of the sound; the caller unrefs it. False at the end.
    [[nodiscard]] bool ReadPacket(AVPacket& packet);
    /// Whether what was asked of the file could be read.
    bool IsSound() const { return !m_failed; }

private:
    int Read(std::uint8_t* bytes, int count);
    std::int64_t Seek(std::int64_t offset, int whence);
    bool OpenStream();

    std::ifstream m_file;
    std::int64_t m_offset = 0;
    std::int64_t m_size = 0; ///< behind the offset
    std::int64_t m_position = 0;
    bool m_failed = false;
    AVIOContext* m_io = nullptr;
    CFfmpegHandle<AVFormatContext> m_format;
    int m_stream = -1;
};

} // namespace velmor
