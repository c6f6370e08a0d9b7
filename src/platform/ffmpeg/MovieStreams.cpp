#include "platform/ffmpeg/MovieStreams.h"

#include <algorithm>

extern "C" {
#include <libavutil/cpu.h>
#include <libavutil/opt.h>
}

namespace velmor {

namespace {

constexpr int bestQuality = 10000;

// A number between what quality 0 and what the best quality stands for.
int AtQuality(int quality, int worst, int best) {
    return worst + (best - worst) * std::clamp(quality, 0, bestQuality) / bestQuality;
}

AVPixelFormat PixelFormatFor(AVCodecID codec) {
    switch (codec) {
    case AV_CODEC_ID_RAWVIDEO:
        return AV_PIX_FMT_BGR24;
    case AV_CODEC_ID_HUFFYUV:
        return AV_PIX_FMT_RGB24;
    case AV_CODEC_ID_FFV1:
        return AV_PIX_FMT_0RGB32;
    case AV_CODEC_ID_MJPEG:
        return AV_PIX_FMT_YUVJ422P;
    default:
        return AV_PIX_FMT_YUV420P;
    }
}

// Players that overlook what a file says of its colours go by the size of the picture: the colours are those of HD
// from that size on, so both kinds show the same.
bool IsHighDefinition(const AVCodecContext& codec) {
    return codec.width >= 1280 || codec.height > 576;
}

void SetUpH264(AVCodecContext& codec, int quality) {
    // Constant quality, which spends bits where there is movement. A step of 6 halves or doubles the size: 14
    // cannot be told from the original, 36 is coarse.
    const int factor = AtQuality(quality, 36, 14);
    const bool isX264 = std::string_view(codec.codec->name) == "libx264";
    if (isX264) {
        av_opt_set_int(codec.priv_data, "crf", factor, 0);
        av_opt_set(codec.priv_data, "tune", "animation", 0);
        // Its code for AVX-512 lets memory that nobody has written decide between pictures; what has AVX-512 has
        // AVX2, whose code gives the same movie each time.
        if ((av_get_cpu_flags() & AV_CPU_FLAG_AVX512) != 0)
            av_opt_set(codec.priv_data, "x264-params", "asm=AVX2", 0);
    } else {
        codec.qmin = codec.qmax = factor;
    }
    const bool hd = IsHighDefinition(codec);
    codec.colorspace = hd ? AVCOL_SPC_BT709 : AVCOL_SPC_SMPTE170M;
    codec.color_primaries = hd ? AVCOL_PRI_BT709 : AVCOL_PRI_SMPTE170M;
    codec.color_trc = hd ? AVCOL_TRC_BT709 : AVCOL_TRC_SMPTE170M;
    codec.color_range = AVCOL_RANGE_MPEG;
    codec.gop_size = 2 * codec.framerate.num; // two seconds to the next picture that a player can start from
    // The encoder's decisions depend on how many threads share them: always as many, whatever the machine has.
    codec.thread_count = 4;
}

void SetUpJpeg(AVCodecContext& codec, int quality) {
    codec.flags |= AV_CODEC_FLAG_QSCALE;
    codec.global_quality = FF_QP2LAMBDA * AtQuality(quality, 31, 2);
    codec.color_range = AVCOL_RANGE_JPEG;
}

CFfmpegHandle<AVCodecContext> MakeVideoCodec(const AVCodec& encoder, const CMovieFormat& movie) {
    CFfmpegHandle<AVCodecContext> codec(avcodec_alloc_context3(&encoder));
    if (!codec)
        return nullptr;
    codec->pix_fmt = PixelFormatFor(encoder.id);
    const int multiple = encoder.id == AV_CODEC_ID_H264 ? 2 : 1;
    codec->width = (movie.width + multiple - 1) / multiple * multiple;
    codec->height = (movie.height + multiple - 1) / multiple * multiple;
    codec->framerate = {std::max(movie.rate, 1), 1};
    codec->time_base = av_inv_q(codec->framerate);
    codec->thread_count = 1;
    codec->gop_size = 1; // a key frame each, so that editors find any of them at once
    if (encoder.id == AV_CODEC_ID_H264)
        SetUpH264(*codec, movie.quality);
    else if (encoder.id == AV_CODEC_ID_MJPEG)
        SetUpJpeg(*codec, movie.quality);
    return codec;
}

CFfmpegHandle<SwsContext> MakeScaler(const AVCodecContext& codec) {
    CFfmpegHandle<SwsContext> scaler(sws_getContext(
        codec.width, codec.height, AV_PIX_FMT_BGR24, codec.width, codec.height, codec.pix_fmt,
        SWS_BICUBIC | SWS_ACCURATE_RND | SWS_BITEXACT | SWS_FULL_CHR_H_INP, nullptr, nullptr, nullptr));
    const int colors = codec.colorspace == AVCOL_SPC_BT709 ? SWS_CS_ITU709 : SWS_CS_ITU601;
    if (scaler)
        sws_setColorspaceDetails(scaler.get(), sws_getCoefficients(SWS_CS_DEFAULT), 1, sws_getCoefficients(colors),
                                 codec.color_range == AVCOL_RANGE_JPEG ? 1 : 0, 0, 1 << 16, 1 << 16);
    return scaler;
}

} // namespace

bool CEncodedStream::Start(AVFormatContext& format, CFfmpegHandle<AVCodecContext> codec) {
    m_format = &format;
    m_codec = std::move(codec);
    m_codec->flags |= AV_CODEC_FLAG_BITEXACT;
    if ((format.oformat->flags & AVFMT_GLOBALHEADER) != 0)
        m_codec->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    m_stream = avformat_new_stream(&format, nullptr);
    if (m_stream == nullptr || !m_packet || avcodec_open2(m_codec.get(), nullptr, nullptr) < 0 ||
        avcodec_parameters_from_context(m_stream->codecpar, m_codec.get()) < 0)
        return false;
    m_stream->codecpar->codec_tag = 0; // the container knows best
    m_stream->time_base = m_codec->time_base;
    m_stream->avg_frame_rate = m_codec->framerate;
    return true;
}

bool CEncodedStream::Encode(const AVFrame* frame, std::int64_t unitsPerPacket) {
    if (avcodec_send_frame(m_codec.get(), frame) < 0)
        return false;
    for (;;) {
        const int got = avcodec_receive_packet(m_codec.get(), m_packet.get());
        if (got == AVERROR(EAGAIN) || got == AVERROR_EOF)
            return true;
        if (got < 0)
            return false;
        m_packet->stream_index = m_stream->index;
        if (m_packet->duration == 0)
            m_packet->duration = unitsPerPacket;
        av_packet_rescale_ts(m_packet.get(), m_codec->time_base, m_stream->time_base);
        if (av_interleaved_write_frame(m_format, m_packet.get()) < 0)
            return false;
    }
}

MovieWriteError CVideoStream::Open(AVFormatContext& format, const CMovieFormat& movie) {
    const AVCodec* encoder = avcodec_find_encoder_by_name(movie.encoder.c_str());
    if (encoder == nullptr || encoder->type != AVMEDIA_TYPE_VIDEO || movie.width < 1 || movie.height < 1)
        return MovieWriteError::NoEncoder;
    CFfmpegHandle<AVCodecContext> codec = MakeVideoCodec(*encoder, movie);
    if (!codec)
        return MovieWriteError::NoMemory;
    if (!m_stream.Start(format, std::move(codec)))
        return MovieWriteError::NoEncoder;
    m_bottomUp = encoder->id == AV_CODEC_ID_RAWVIDEO; // as bitmaps are
    return MakeFrame(movie) ? MovieWriteError::None : MovieWriteError::NoMemory;
}

bool CVideoStream::MakeFrame(const CMovieFormat& movie) {
    const AVCodecContext& codec = m_stream.Codec();
    m_width = movie.width;
    m_height = movie.height;
    if (codec.width != m_width || codec.height != m_height)
        for (std::size_t i = 0,
                         pixels = static_cast<std::size_t>(codec.width) * static_cast<std::size_t>(codec.height);
             i < pixels; ++i)
            m_padded.insert(m_padded.end(), movie.background.begin(), movie.background.end());
    m_scaler = MakeScaler(codec);
    m_frame.reset(av_frame_alloc());
    if (!m_scaler || !m_frame)
        return false;
    m_frame->format = codec.pix_fmt;
    m_frame->width = codec.width;
    m_frame->height = codec.height;
    m_frame->quality = codec.global_quality;
    return av_frame_get_buffer(m_frame.get(), 0) >= 0;
}

// The frame stands at the upper left of the coded one.
const std::uint8_t* CVideoStream::Padded(std::span<const std::uint8_t> frame) {
    if (m_padded.empty())
        return frame.data();
    const AVCodecContext& codec = m_stream.Codec();
    const std::ptrdiff_t rowsBelow = codec.height - m_height;
    for (std::ptrdiff_t row = 0; row < m_height; ++row)
        std::copy_n(frame.begin() + row * m_width * 3, m_width * 3,
                    m_padded.begin() + (row + rowsBelow) * codec.width * 3);
    return m_padded.data();
}

bool CVideoStream::Convert(std::span<const std::uint8_t> frame) {
    if (frame.size() != static_cast<std::size_t>(m_width) * static_cast<std::size_t>(m_height) * 3 ||
        av_frame_make_writable(m_frame.get()) < 0)
        return false;
    const AVCodecContext& codec = m_stream.Codec();
    const std::uint8_t* pixels = Padded(frame);
    int stride = codec.width * 3;
    if (!m_bottomUp) {
        pixels += static_cast<std::ptrdiff_t>(stride) * (codec.height - 1);
        stride = -stride;
    }
    const std::uint8_t* const planes[4] = {pixels, nullptr, nullptr, nullptr};
    const int strides[4] = {stride, 0, 0, 0};
    return sws_scale(m_scaler.get(), planes, strides, 0, codec.height, m_frame->data, m_frame->linesize) ==
           codec.height;
}

bool CVideoStream::Encode(int position) {
    m_frame->pts = position;
    return m_stream.Encode(m_frame.get(), 1);
}

MovieWriteError CSoundStream::Open(AVFormatContext& format, const CMovieSoundTrack& sound,
                                   MovieContainer container) {
    // Of AAC: more than one channel of 22050 samples a second can show, and what nobody hears the loss of.
    constexpr int bitsPerSecond = 96000;
    constexpr int stereoBitsPerSecond = 256000;
    const AVCodec* encoder =
        avcodec_find_encoder(container == MovieContainer::Mp4 ? AV_CODEC_ID_AAC : AV_CODEC_ID_PCM_U8);
    if (encoder == nullptr)
        return MovieWriteError::NoEncoder;
    CFfmpegHandle<AVCodecContext> codec(avcodec_alloc_context3(encoder));
    if (!codec || !m_frame)
        return MovieWriteError::NoMemory;
    codec->sample_fmt = encoder->id == AV_CODEC_ID_AAC ? AV_SAMPLE_FMT_FLTP : AV_SAMPLE_FMT_U8;
    codec->sample_rate = sound.rate;
    codec->time_base = {1, sound.rate};
    const bool isStereo = container == MovieContainer::Mp4 && !sound.stereo.empty();
    codec->bit_rate = isStereo ? stereoBitsPerSecond : bitsPerSecond;
    codec->thread_count = 1;
    av_channel_layout_default(&codec->ch_layout, isStereo ? 2 : 1);
    if (isStereo)
        m_stereo = sound.stereo;
    else
        m_samples.assign(sound.samples.begin(), sound.samples.end());
    return m_stream.Start(format, std::move(codec)) ? MovieWriteError::None : MovieWriteError::NoEncoder;
}

bool CSoundStream::WriteUpTo(std::size_t end) {
    end = std::min(end, Length());
    const int frameSize = m_stream.Codec().frame_size; // 0 where any will do
    while (m_written < end) {
        const std::size_t count = frameSize > 0 ? static_cast<std::size_t>(frameSize) : end - m_written;
        if (m_written + count > end)
            return true;
        if (!Write(count))
            return false;
    }
    return true;
}

bool CSoundStream::Finish(std::size_t end) {
    end = std::min(end, Length());
    return WriteUpTo(end) && (m_written >= end || Write(end - m_written)) && m_stream.Encode(nullptr, 0);
}

bool CSoundStream::Write(std::size_t count) {
    const AVCodecContext& codec = m_stream.Codec();
    av_frame_unref(m_frame.get());
    m_frame->format = codec.sample_fmt;
    m_frame->sample_rate = codec.sample_rate;
    m_frame->nb_samples = static_cast<int>(count);
    m_frame->pts = static_cast<std::int64_t>(m_written);
    if (av_channel_layout_copy(&m_frame->ch_layout, &codec.ch_layout) < 0 ||
        av_frame_get_buffer(m_frame.get(), 0) < 0)
        return false;
    Fill(count);
    m_written += count;
    return m_stream.Encode(m_frame.get(), static_cast<std::int64_t>(count));
}

void CSoundStream::Fill(std::size_t count) {
    if (!m_stereo.empty()) {
        auto* left = reinterpret_cast<float*>(m_frame->data[0]);
        auto* right = reinterpret_cast<float*>(m_frame->data[1]);
        for (std::size_t i = 0; i < count; ++i) {
            left[i] = m_stereo[2 * (m_written + i)];
            right[i] = m_stereo[2 * (m_written + i) + 1];
        }
        return;
    }
    const std::span<const std::uint8_t> samples = std::span(m_samples).subspan(m_written, count);
    if (m_stream.Codec().sample_fmt == AV_SAMPLE_FMT_U8)
        std::ranges::copy(samples, m_frame->data[0]);
    else
        std::ranges::transform(samples, reinterpret_cast<float*>(m_frame->data[0]), [](std::uint8_t sample) {
            constexpr int silence = 128;
            return static_cast<float>(sample - silence) / silence;
        });
}

} // namespace velmor
