#pragma once

#include "platform/ffmpeg/Ffmpeg.h"
#include "platform/movie/MovieLibrary.h"

namespace velmor {

/// The open file, its video decoder, and the two decoded frames around the last position asked for.
class CMovieDecoder final : public IMovieDecoder {
public:
    MovieError Open(const std::string& file) override;
    CMovieStream Describe(const std::optional<CFrameRectangle>& rectangle) override;
    bool ReadFrame(int position, CMoviePicture& picture) override;
    bool HasSound() const override { return m_soundStream >= 0; }

private:
    MovieError OpenVideo();
    const AVStream& Video() const { return *m_format->streams[m_videoStream]; }
    std::int64_t TimeOf(int position) const;
    bool Shows(std::int64_t time) const;
    bool GoTo(std::int64_t time);
    bool Advance();
    bool DecodeNext();
    bool Convert(CMoviePicture& picture);

    CFfmpegHandle<AVFormatContext> m_format;
    CFfmpegHandle<AVCodecContext> m_codec;
    CFfmpegHandle<AVPacket> m_packet{av_packet_alloc()};
    CFfmpegHandle<AVFrame> m_shown{av_frame_alloc()};
    CFfmpegHandle<AVFrame> m_next{av_frame_alloc()};
    CFfmpegHandle<SwsContext> m_scaler;
    AVRational m_frameTime{1, 25}; ///< seconds a frame
    std::int64_t m_startTime = 0;
    int m_videoStream = -1;
    int m_soundStream = -1;
    int m_width = 0; ///< of the frame rectangle
    int m_height = 0;
    bool m_hasShown = false;
    bool m_hasNext = false;
    bool m_isDraining = false;
};

} // namespace velmor
