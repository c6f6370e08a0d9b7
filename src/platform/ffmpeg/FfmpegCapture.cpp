#include "platform/ffmpeg/FfmpegCapture.h"

extern "C" {
#include <libavdevice/avdevice.h>
}

#include <cerrno>

namespace velmor {

namespace {

constexpr int mostPixels = 15000; // to a side, as for every bitmap
constexpr std::chrono::seconds patience{5};

class CDictionary {
public:
    CDictionary() = default;
    CDictionary(const CDictionary&) = delete;
    CDictionary& operator=(const CDictionary&) = delete;
    ~CDictionary() { av_dict_free(&m_entries); }

    void Set(const char* key, const std::string& value) { av_dict_set(&m_entries, key, value.c_str(), 0); }
    AVDictionary** Entries() { return &m_entries; }

private:
    AVDictionary* m_entries = nullptr;
};

const AVInputFormat* FindInputDevice(const std::string& name) {
    avdevice_register_all();
    // What the user is to know of failures is returned; FFmpeg's words would go to the terminal.
    av_log_set_level(AV_LOG_QUIET);
    return av_find_input_format(name.c_str());
}

} // namespace

std::unique_ptr<ICaptureInput> CFfmpegCapture::Open(const CCaptureSource& source, const CCaptureFormat& wanted) {
    std::unique_ptr<CFfmpegCapture> input(new CFfmpegCapture);
    const bool isOpen = input->m_packet && input->m_picture && input->OpenSource(source, wanted);
    return isOpen && input->OpenDecoder(source) ? std::move(input) : nullptr;
}

bool CFfmpegCapture::OpenSource(const CCaptureSource& source, const CCaptureFormat& wanted) {
    const AVInputFormat* device = FindInputDevice(source.inputDevice);
    AVFormatContext* format = device != nullptr ? avformat_alloc_context() : nullptr;
    if (format == nullptr)
        return false;
    m_deadline = Clock::now() + patience;
    format->interrupt_callback = {
        [](void* self) { return Clock::now() > static_cast<CFfmpegCapture*>(self)->m_deadline ? 1 : 0; }, this};
    // A device that has fallen silent would hold a reader that waits for ever.
    format->flags |= AVFMT_FLAG_NONBLOCK;
    CDictionary options;
    if (wanted.width > 0)
        options.Set("video_size", std::to_string(wanted.width) + "x" + std::to_string(wanted.height));
    if (wanted.rate > 0)
        options.Set("framerate", std::to_string(wanted.rate));
    if (!wanted.coding.empty())
        options.Set("input_format", wanted.coding);
    // On failure the context is freed.
    if (avformat_open_input(&format, source.name.c_str(), device, options.Entries()) < 0)
        return false;
    m_format.reset(format);
    m_stream = av_find_best_stream(format, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
    return m_stream >= 0;
}

bool CFfmpegCapture::OpenDecoder(const CCaptureSource& source) {
    const AVStream& stream = *m_format->streams[m_stream];
    const AVCodecParameters& parameters = *stream.codecpar;
    if (parameters.width < 1 || parameters.height < 1 || parameters.width > mostPixels ||
        parameters.height > mostPixels)
        return false;
    AVRational rate = stream.avg_frame_rate;
    if (rate.num <= 0 && !source.hasClock)
        rate = av_inv_q(stream.time_base); // its unit of time is the frame
    m_frameFormat = {parameters.width, parameters.height, rate.num > 0 && rate.den > 0 ? av_q2d(rate) : 0, {}};
    const AVCodec* codec = avcodec_find_decoder(parameters.codec_id);
    if (codec == nullptr)
        return false;
    m_codec.reset(avcodec_alloc_context3(codec));
    return m_codec && avcodec_parameters_to_context(m_codec.get(), &parameters) >= 0 &&
           avcodec_open2(m_codec.get(), codec, nullptr) >= 0;
}

ICaptureInput::Result CFfmpegCapture::Read(CCaptureFrame& frame) {
    m_deadline = Clock::now() + patience;
    av_packet_unref(m_packet.get());
    const int read = av_read_frame(m_format.get(), m_packet.get());
    if (read == AVERROR(EAGAIN))
        return Result::NotYet;
    if (read < 0)
        return Result::Ended;
    if (m_packet->stream_index != m_stream)
        return Result::NotYet;
    // A packet without bytes stands for a damaged frame; to a decoder it would be the end.
    if (m_packet->size <= 0 || avcodec_send_packet(m_codec.get(), m_packet.get()) < 0)
        return Result::Bad;
    const int decoded = avcodec_receive_frame(m_codec.get(), m_picture.get());
    if (decoded == AVERROR(EAGAIN))
        return Result::NotYet;
    if (decoded < 0 || !Convert(frame))
        return Result::Bad;
    TakeTime();
    return Result::Frame;
}

bool CFfmpegCapture::Convert(CCaptureFrame& frame) {
    const AVFrame& picture = *m_picture;
    const int width = m_frameFormat.width;
    const int height = m_frameFormat.height;
    if (picture.width != width || picture.height != height)
        return false;
    m_converter.reset(sws_getCachedContext(m_converter.release(), width, height,
                                           static_cast<AVPixelFormat>(picture.format), width, height,
                                           AV_PIX_FMT_BGR0, SWS_BILINEAR, nullptr, nullptr, nullptr));
    if (!m_converter)
        return false;
    const int rowBytes = width * 4;
    frame.width = width;
    frame.height = height;
    frame.bytes.resize(static_cast<std::size_t>(rowBytes) * static_cast<std::size_t>(height));
    std::uint8_t* const planes[4] = {frame.bytes.data(), nullptr, nullptr, nullptr};
    const int strides[4] = {rowBytes, 0, 0, 0};
    return sws_scale(m_converter.get(), picture.data, picture.linesize, 0, height, planes, strides) == height;
}

void CFfmpegCapture::TakeTime() {
    const std::int64_t time = m_picture->best_effort_timestamp;
    if (time == AV_NOPTS_VALUE)
        return;
    if (m_firstTime == AV_NOPTS_VALUE)
        m_firstTime = time;
    m_time = std::chrono::microseconds(
        av_rescale_q(time - m_firstTime, m_format->streams[m_stream]->time_base, av_make_q(1, AV_TIME_BASE)));
}

} // namespace velmor
