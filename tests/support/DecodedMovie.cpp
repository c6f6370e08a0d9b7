#include "DecodedMovie.h"

#include <algorithm>
#include <memory>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/imgutils.h>
#include <libswscale/swscale.h>
}

namespace velmor::testing {

namespace {

struct CFree {
    void operator()(AVFormatContext* p) const { avformat_close_input(&p); }
    void operator()(AVCodecContext* p) const { avcodec_free_context(&p); }
    void operator()(AVPacket* p) const { av_packet_free(&p); }
    void operator()(AVFrame* p) const { av_frame_free(&p); }
    void operator()(SwsContext* p) const { sws_freeContext(p); }
};
template<class T>
using CHandle = std::unique_ptr<T, CFree>;

class CMovieReader {
public:
    bool Open(const std::filesystem::path& path) {
        AVFormatContext* context = nullptr;
        if (avformat_open_input(&context, path.c_str(), nullptr, nullptr) < 0)
            return false;
        m_format.reset(context);
        if (avformat_find_stream_info(context, nullptr) < 0)
            return false;
        m_video = av_find_best_stream(context, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
        m_sound = av_find_best_stream(context, AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0);
        return m_video >= 0 && OpenDecoder();
    }

    const AVStream& Video() const { return *m_format->streams[m_video]; }
    const AVStream* Sound() const { return m_sound < 0 ? nullptr : m_format->streams[m_sound]; }
    bool IsVideo() const { return m_packet->stream_index == m_video; }
    bool IsSound() const { return m_packet->stream_index == m_sound; }
    const AVPacket& Packet() const { return *m_packet; }

    /// The next packet, AVERROR_EOF after the last.
    int ReadPacket() {
        av_packet_unref(m_packet.get());
        return av_read_frame(m_format.get(), m_packet.get());
    }

    std::optional<CDecodedFrame> DecodePacket() {
        if (avcodec_send_packet(m_decoder.get(), m_packet.get()) < 0)
            return std::nullopt;
        return TakeFrame();
    }

    /// Decodes the packet, or what is left after the last, into all frames that are then complete.
    bool DecodeInto(std::vector<CDecodedFrame>& frames, bool isEnd = false) {
        if (avcodec_send_packet(m_decoder.get(), isEnd ? nullptr : m_packet.get()) < 0)
            return false;
        while (std::optional<CDecodedFrame> frame = TakeFrame())
            frames.push_back(std::move(*frame));
        return true;
    }

    bool Seek(std::int64_t position) {
        return av_seek_frame(m_format.get(), m_video, position, AVSEEK_FLAG_BACKWARD) >= 0;
    }

private:
    std::optional<CDecodedFrame> TakeFrame() {
        if (avcodec_receive_frame(m_decoder.get(), m_frame.get()) < 0)
            return std::nullopt;
        return CDecodedFrame{PositionOf(m_frame->best_effort_timestamp), m_frame->key_frame != 0, PixelsOfFrame()};
    }

    // In an AVI a unit of time is a sample of the stream; elsewhere it is finer.
    std::int64_t PositionOf(std::int64_t time) const {
        const bool isAvi = std::string_view(m_format->iformat->name) == "avi";
        return isAvi ? time : av_rescale_q(time, Video().time_base, av_inv_q(Video().r_frame_rate));
    }

    bool OpenDecoder() {
        const AVCodecParameters* parameters = Video().codecpar;
        const AVCodec* codec = avcodec_find_decoder(parameters->codec_id);
        m_decoder.reset(avcodec_alloc_context3(codec));
        m_decoder->err_recognition = AV_EF_EXPLODE;
        return codec && avcodec_parameters_to_context(m_decoder.get(), parameters) >= 0 &&
               avcodec_open2(m_decoder.get(), codec, nullptr) >= 0;
    }

    std::vector<std::uint8_t> PixelsOfFrame() const {
        const int width = m_frame->width;
        const int height = m_frame->height;
        const CHandle<SwsContext> scaler(sws_getContext(width, height, static_cast<AVPixelFormat>(m_frame->format),
                                                        width, height, AV_PIX_FMT_BGR24,
                                                        SWS_POINT | SWS_ACCURATE_RND, nullptr, nullptr, nullptr));
        std::vector<std::uint8_t> topDown(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3);
        std::uint8_t* const planes[4] = {topDown.data(), nullptr, nullptr, nullptr};
        const int strides[4] = {width * 3, 0, 0, 0};
        sws_scale(scaler.get(), m_frame->data, m_frame->linesize, 0, height, planes, strides);
        std::vector<std::uint8_t> bottomUp;
        for (int row = height - 1; row >= 0; --row)
            bottomUp.insert(bottomUp.end(), topDown.begin() + row * width * 3,
                            topDown.begin() + (row + 1) * width * 3);
        return bottomUp;
    }

    CHandle<AVFormatContext> m_format;
    CHandle<AVCodecContext> m_decoder;
    CHandle<AVPacket> m_packet{av_packet_alloc()};
    CHandle<AVFrame> m_frame{av_frame_alloc()};
    int m_video = -1;
    int m_sound = -1;
};

CDecodedMovie Describe(const CMovieReader& reader) {
    CDecodedMovie movie;
    const AVStream& video = reader.Video();
    movie.videoCodec = avcodec_get_name(video.codecpar->codec_id);
    movie.width = video.codecpar->width;
    movie.height = video.codecpar->height;
    movie.rate = av_q2d(video.r_frame_rate);
    movie.videoDuration = video.duration;
    if (const AVStream* sound = reader.Sound()) {
        movie.soundCodec = avcodec_get_name(sound->codecpar->codec_id);
        movie.soundRate = sound->codecpar->sample_rate;
        movie.soundChannels = sound->codecpar->ch_layout.nb_channels;
    }
    return movie;
}

} // namespace

std::optional<CDecodedMovie> DecodeMovie(const std::filesystem::path& path) {
    CMovieReader reader;
    if (!reader.Open(path))
        return std::nullopt;
    CDecodedMovie movie = Describe(reader);
    int result = 0;
    while ((result = reader.ReadPacket()) >= 0) {
        const AVPacket& packet = reader.Packet();
        if (reader.IsSound())
            movie.sound.insert(movie.sound.end(), packet.data, packet.data + packet.size);
        if (!reader.IsVideo() || packet.size == 0)
            continue;
        if (!reader.DecodeInto(movie.frames))
            return std::nullopt;
    }
    if (!reader.DecodeInto(movie.frames, true))
        return std::nullopt;
    return result == AVERROR_EOF ? std::optional(std::move(movie)) : std::nullopt;
}

std::optional<CDecodedFrame> DecodeFrameAt(const std::filesystem::path& path, std::int64_t position) {
    CMovieReader reader;
    if (!reader.Open(path) || !reader.Seek(position))
        return std::nullopt;
    while (reader.ReadPacket() >= 0)
        if (reader.IsVideo() && reader.Packet().size > 0)
            return reader.DecodePacket();
    return std::nullopt;
}

} // namespace velmor::testing
