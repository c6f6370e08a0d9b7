#pragma once

#include "platform/ffmpeg/Ffmpeg.h"
#include "platform/movie/MovieWriter.h"

#include <optional>

namespace velmor {

/// A stream of a movie that is written, with its encoder.
class CEncodedStream {
public:
    /// Opens `codec`, which has been set up, and adds its stream to `format`, which outlives this.
    [[nodiscard]] bool Start(AVFormatContext& format, CFfmpegHandle<AVCodecContext> codec);
    /// Encodes a frame and hands over the packets that are ready; null for the end. `unitsPerPacket` is the time
    /// that a packet takes where the encoder does not say.
    [[nodiscard]] bool Encode(const AVFrame* frame, std::int64_t unitsPerPacket);
    const AVCodecContext& Codec() const { return *m_codec; }

private:
    AVFormatContext* m_format = nullptr;
    AVStream* m_stream = nullptr;
    CFfmpegHandle<AVCodecContext> m_codec;
    CFfmpegHandle<AVPacket> m_packet{av_packet_alloc()};
};

/// The pictures of a movie.
class CVideoStream {
public:
    MovieWriteError Open(AVFormatContext& format, const CMovieFormat& movie);
    /// Converts a frame; Encode() then writes it once a call.
    [[nodiscard]] bool Convert(std::span<const std::uint8_t> frame);
    [[nodiscard]] bool Encode(int position);
    [[nodiscard]] bool Finish() { return m_stream.Encode(nullptr, 1); }

private:
    [[nodiscard]] bool MakeFrame(const CMovieFormat& movie);
    const std::uint8_t* Padded(std::span<const std::uint8_t> frame);

    CEncodedStream m_stream;
    CFfmpegHandle<AVFrame> m_frame;
    CFfmpegHandle<SwsContext> m_scaler;
    std::vector<std::uint8_t> m_padded; ///< where the coded frame is larger than the movie's
    int m_width = 0;                    ///< of the movie's frame
    int m_height = 0;
    bool m_bottomUp = false;
};

/// The sound of a movie.
class CSoundStream {
public:
    MovieWriteError Open(AVFormatContext& format, const CMovieSoundTrack& sound, MovieContainer container);
    /// Writes the samples before `end` that fill whole frames of the encoder.
    [[nodiscard]] bool WriteUpTo(std::size_t end);
    /// Writes what is left before `end` and drops what comes after: a movie may end sooner than was meant.
    [[nodiscard]] bool Finish(std::size_t end);

private:
    [[nodiscard]] bool Write(std::size_t count);
    void Fill(std::size_t count);
    /// Samples of a channel.
    std::size_t Length() const { return m_stereo.empty() ? m_samples.size() : m_stereo.size() / 2; }

    CEncodedStream m_stream;
    CFfmpegHandle<AVFrame> m_frame{av_frame_alloc()};
    std::vector<std::uint8_t> m_samples;
    std::span<const float> m_stereo; ///< in their place
    std::size_t m_written = 0;
};

} // namespace velmor
