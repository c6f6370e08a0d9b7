#include "platform/ffmpeg/MovieDecoder.h"

#include <algorithm>
#include <cerrno>
#include <limits>

namespace velmor {

namespace {

constexpr int mostPixels = 15000; // to a side; what is larger is no movie that anyone plays here

MovieError ErrorOf(int code, MovieError otherwise) {
    switch (code) {
    case AVERROR(ENOENT):
    case AVERROR(EACCES):
    case AVERROR(EISDIR):
        return MovieError::FileOpen;
    case AVERROR(EIO):
        return MovieError::FileRead;
    case AVERROR(ENOMEM):
        return MovieError::NoMemory;
    case AVERROR_DEMUXER_NOT_FOUND:
        return MovieError::NoHandler;
    default:
        return otherwise;
    }
}

// Video in brightness and colour differences says which of the two it means, or is told by its size.
void UseColorsOf(const AVFrame& frame, SwsContext& scaler) {
    constexpr int highDefinition = 720;
    int matrix = frame.colorspace;
    if (matrix == AVCOL_SPC_UNSPECIFIED || matrix == AVCOL_SPC_RGB)
        matrix = frame.height >= highDefinition ? SWS_CS_ITU709 : SWS_CS_ITU601;
    const int* coefficients = sws_getCoefficients(matrix);
    constexpr int neutral = 1 << 16;
    sws_setColorspaceDetails(&scaler, coefficients, frame.color_range == AVCOL_RANGE_JPEG ? 1 : 0, coefficients, 1,
                             0, neutral, neutral);
}

// FFmpeg's messages would go to the terminal; what the user is to know is returned instead.
void KeepQuiet() {
    av_log_set_level(AV_LOG_QUIET);
}

} // namespace

MovieError CMovieDecoder::Open(const std::string& file) {
    KeepQuiet();
    if (!m_packet || !m_shown || !m_next)
        return MovieError::NoMemory;
    AVFormatContext* format = nullptr;
    if (const int code = avformat_open_input(&format, file.c_str(), nullptr, nullptr); code < 0)
        return ErrorOf(code, MovieError::BadFormat);
    m_format.reset(format);
    if (const int code = avformat_find_stream_info(format, nullptr); code < 0)
        return ErrorOf(code, MovieError::BadFormat);
    m_videoStream = av_find_best_stream(format, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
    m_soundStream = av_find_best_stream(format, AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0);
    return m_videoStream < 0 ? MovieError::NoVideo : OpenVideo();
}

MovieError CMovieDecoder::OpenVideo() {
    const AVCodecParameters* parameters = Video().codecpar;
    const AVCodec* codec = avcodec_find_decoder(parameters->codec_id);
    if (codec == nullptr)
        return MovieError::NoDecompressor;
    m_codec.reset(avcodec_alloc_context3(codec));
    if (!m_codec || avcodec_parameters_to_context(m_codec.get(), parameters) < 0 ||
        avcodec_open2(m_codec.get(), codec, nullptr) < 0)
        return MovieError::NoDecompressor;
    if (parameters->width < 1 || parameters->height < 1 || parameters->width > mostPixels ||
        parameters->height > mostPixels)
        return MovieError::BadFormat;
    return MovieError::None;
}

CMovieStream CMovieDecoder::Describe(const std::optional<CFrameRectangle>& described) {
    const AVStream& video = Video();
    AVRational rate = video.avg_frame_rate;
    const bool isAvi = std::string_view(m_format->iformat->name) == "avi";
    // In an AVI file a unit of time is a frame; a mean over its pictures would leave the empty samples out.
    if (isAvi || rate.num <= 0 || rate.den <= 0)
        rate = av_inv_q(video.time_base);
    if (rate.num <= 0 || rate.den <= 0)
        return {};
    m_frameTime = av_inv_q(rate);
    m_startTime = video.start_time == AV_NOPTS_VALUE ? 0 : video.start_time;

    CMovieStream stream;
    stream.rate = rate.num;
    stream.scale = rate.den;
    std::int64_t frames = isAvi ? video.nb_frames : 0;
    if (frames <= 0 && video.duration > 0)
        frames = av_rescale_q(video.duration, video.time_base, m_frameTime);
    if (frames <= 0 && m_format->duration > 0)
        frames = av_rescale_q(m_format->duration, av_make_q(1, AV_TIME_BASE), m_frameTime);
    stream.frameCount = static_cast<int>(std::clamp<std::int64_t>(frames, 0, std::numeric_limits<int>::max()));

    const CFrameRectangle rectangle = isAvi ? described.value_or(CFrameRectangle{}) : CFrameRectangle{};
    const bool cuts = rectangle.width > 0 && rectangle.height > 0 && rectangle.width <= video.codecpar->width &&
                      rectangle.height <= video.codecpar->height;
    m_width = stream.width = cuts ? rectangle.width : video.codecpar->width;
    m_height = stream.height = cuts ? rectangle.height : video.codecpar->height;
    return stream;
}

std::int64_t CMovieDecoder::TimeOf(int position) const {
    return m_startTime + av_rescale_q(position, m_frameTime, Video().time_base);
}

bool CMovieDecoder::Shows(std::int64_t time) const {
    return m_hasShown && m_shown->best_effort_timestamp <= time &&
           (!m_hasNext || m_next->best_effort_timestamp > time);
}

bool CMovieDecoder::DecodeNext() {
    m_hasNext = false;
    for (;;) {
        const int got = avcodec_receive_frame(m_codec.get(), m_next.get());
        if (got >= 0) {
            m_hasNext = true;
            return true;
        }
        if (got != AVERROR(EAGAIN) || m_isDraining)
            return false;
        av_packet_unref(m_packet.get());
        if (av_read_frame(m_format.get(), m_packet.get()) < 0) {
            m_isDraining = true;
            avcodec_send_packet(m_codec.get(), nullptr);
        } else if (m_packet->stream_index == m_videoStream && m_packet->size > 0) {
            // A packet that cannot be decoded leaves the picture before it on the screen.
            avcodec_send_packet(m_codec.get(), m_packet.get());
        }
    }
}

bool CMovieDecoder::Advance() {
    if (!m_hasNext)
        return false;
    std::swap(m_shown, m_next);
    m_hasShown = true;
    DecodeNext();
    return true;
}

bool CMovieDecoder::GoTo(std::int64_t time) {
    constexpr int framesWorthDecoding = 50; // further ahead a key frame is likely to be nearer
    const std::int64_t ahead = av_rescale_q(framesWorthDecoding, m_frameTime, Video().time_base);
    const bool isNear =
        m_hasShown && time >= m_shown->best_effort_timestamp && time - m_shown->best_effort_timestamp <= ahead;
    if (!isNear) {
        if (av_seek_frame(m_format.get(), m_videoStream, time, AVSEEK_FLAG_BACKWARD) < 0 &&
            av_seek_frame(m_format.get(), m_videoStream, m_startTime, AVSEEK_FLAG_BACKWARD) < 0)
            return false;
        avcodec_flush_buffers(m_codec.get());
        m_isDraining = false;
        m_hasShown = false;
        DecodeNext();
    }
    // Before the first picture there is nothing else to show than that picture.
    while (!Shows(time) && (m_hasNext && (!m_hasShown || m_next->best_effort_timestamp <= time)))
        Advance();
    return m_hasShown;
}

bool CMovieDecoder::Convert(CMoviePicture& picture) {
    const AVFrame& frame = *m_shown;
    if (frame.width < m_width || frame.height < m_height || frame.width > mostPixels || frame.height > mostPixels)
        return false;
    m_scaler.reset(sws_getCachedContext(m_scaler.release(), frame.width, frame.height,
                                        static_cast<AVPixelFormat>(frame.format), frame.width, frame.height,
                                        AV_PIX_FMT_BGR0, SWS_POINT | SWS_ACCURATE_RND, nullptr, nullptr, nullptr));
    if (!m_scaler)
        return false;
    UseColorsOf(frame, *m_scaler);
    const int rowBytes = frame.width * 4;
    CMoviePicture decoded{frame.width, frame.height, {}};
    decoded.bytes.resize(static_cast<std::size_t>(rowBytes) * static_cast<std::size_t>(frame.height));
    std::uint8_t* const planes[4] = {decoded.bytes.data(), nullptr, nullptr, nullptr};
    const int strides[4] = {rowBytes, 0, 0, 0};
    if (sws_scale(m_scaler.get(), frame.data, frame.linesize, 0, frame.height, planes, strides) != frame.height)
        return false;
    // What a codec needs beside the frame lies below it and at its right.
    if (m_width != frame.width || m_height != frame.height) {
        const std::ptrdiff_t cutBytes = std::ptrdiff_t{m_width} * 4;
        std::vector<std::uint8_t> cut(static_cast<std::size_t>(cutBytes * m_height));
        for (std::ptrdiff_t row = 0; row < m_height; ++row)
            std::copy_n(decoded.bytes.begin() + row * rowBytes, cutBytes, cut.begin() + row * cutBytes);
        decoded = {m_width, m_height, std::move(cut)};
    }
    picture = std::move(decoded);
    return true;
}

bool CMovieDecoder::ReadFrame(int position, CMoviePicture& picture) {
    const std::int64_t time = TimeOf(position);
    return (Shows(time) || GoTo(time)) && Convert(picture);
}

} // namespace velmor
