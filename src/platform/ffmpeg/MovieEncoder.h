#pragma once

#include "platform/ffmpeg/MovieFile.h"
#include "platform/ffmpeg/MovieStreams.h"

namespace velmor {

/// The file and its streams, which are given back in the reverse order.
class CMovieEncoder final : public IMovieEncoder {
public:
    MovieWriteError Open(IMovieBytes& file, const CMovieFormat& format, const CMovieSoundTrack& sound) override;
    MovieWriteError WriteFrame(int position, std::span<const std::uint8_t> frame) override;
    MovieWriteError Close(int length) override;

private:
    MovieWriteError MakeContainer();
    MovieWriteError Start();
    /// What a step comes to, errors that FFmpeg met in the file and kept to itself included.
    MovieWriteError Result(bool done) {
        return done && m_file.IsSound() ? MovieWriteError::None : MovieWriteError::FileWrite;
    }
    bool EncodeFrame();
    bool RepeatUntil(int position);
    /// Samples of the sound in the time before a frame.
    std::size_t SamplesBefore(int position) const;

    CMovieFormat m_movie;
    int m_soundRate = 0;
    int m_next = 0; ///< position of the next frame
    CMovieFile m_file;
    CFfmpegOutput m_format;
    CVideoStream m_video;
    std::optional<CSoundStream> m_sound;
};

} // namespace velmor
