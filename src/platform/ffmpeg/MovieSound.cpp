#include "platform/ffmpeg/MovieSound.h"

#include "platform/ffmpeg/Ffmpeg.h"

namespace velmor {

namespace {

// Longer sounds are cut: two hours are beyond any flipbook, and the samples are held in memory.
constexpr std::size_t mostSeconds = 7200;

/// A file of its own beside the one whose video is decoded, so that reading ahead in the sound disturbs nothing.
class CFlatSoundDecoder {
public:
    MovieError Open(const std::string& file, int rate);
    MovieError ReadAll(std::vector<std::uint8_t>& samples);

private:
    bool StartConversion(const AVFrame& frame);
    bool Append(const AVFrame* frame, std::vector<std::uint8_t>& samples);
    bool TakeFrames(std::vector<std::uint8_t>& samples);

    CFfmpegHandle<AVFormatContext> m_format;
    CFfmpegHandle<AVCodecContext> m_codec;
    CFfmpegHandle<SwrContext> m_converter;
    CFfmpegHandle<AVPacket> m_packet{av_packet_alloc()};
    CFfmpegHandle<AVFrame> m_frame{av_frame_alloc()};
    int m_stream = -1;
    int m_rate = 0;
};

MovieError CFlatSoundDecoder::Open(const std::string& file, int rate) {
    m_rate = rate;
    AVFormatContext* format = nullptr;
    if (avformat_open_input(&format, file.c_str(), nullptr, nullptr) < 0)
        return MovieError::FileOpen;
    m_format.reset(format);
    if (avformat_find_stream_info(format, nullptr) < 0)
        return MovieError::BadFormat;
    m_stream = av_find_best_stream(format, AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0);
    if (m_stream < 0)
        return MovieError::BadFormat;
    const AVCodecParameters* parameters = format->streams[m_stream]->codecpar;
    const AVCodec* codec = avcodec_find_decoder(parameters->codec_id);
    if (codec == nullptr)
        return MovieError::NoHandler;
    m_codec.reset(avcodec_alloc_context3(codec));
    if (!m_codec || !m_packet || !m_frame)
        return MovieError::NoMemory;
    if (avcodec_parameters_to_context(m_codec.get(), parameters) < 0 ||
        avcodec_open2(m_codec.get(), codec, nullptr) < 0)
        return MovieError::NoHandler;
    return MovieError::None;
}

bool CFlatSoundDecoder::StartConversion(const AVFrame& frame) {
    AVChannelLayout mono{};
    av_channel_layout_default(&mono, 1);
    AVChannelLayout source{};
    if (frame.ch_layout.order == AV_CHANNEL_ORDER_UNSPEC)
        av_channel_layout_default(&source, frame.ch_layout.nb_channels);
    else if (av_channel_layout_copy(&source, &frame.ch_layout) < 0)
        return false;
    SwrContext* converter = nullptr;
    const int made = swr_alloc_set_opts2(&converter, &mono, AV_SAMPLE_FMT_U8, m_rate, &source,
                                         static_cast<AVSampleFormat>(frame.format), frame.sample_rate, 0, nullptr);
    av_channel_layout_uninit(&source);
    m_converter.reset(converter);
    return made >= 0 && swr_init(converter) >= 0;
}

bool CFlatSoundDecoder::Append(const AVFrame* frame, std::vector<std::uint8_t>& samples) {
    if (frame != nullptr && !m_converter && !StartConversion(*frame))
        return false;
    if (!m_converter)
        return true;
    const int count = frame != nullptr ? frame->nb_samples : 0;
    const int room = swr_get_out_samples(m_converter.get(), count);
    if (room < 0)
        return false;
    const std::size_t before = samples.size();
    samples.resize(before + static_cast<std::size_t>(room));
    std::uint8_t* out = samples.data() + before;
    const auto** in = frame != nullptr ? const_cast<const std::uint8_t**>(frame->extended_data) : nullptr;
    const int written = swr_convert(m_converter.get(), &out, room, in, count);
    samples.resize(before + static_cast<std::size_t>(std::max(written, 0)));
    return written >= 0;
}

bool CFlatSoundDecoder::TakeFrames(std::vector<std::uint8_t>& samples) {
    while (avcodec_receive_frame(m_codec.get(), m_frame.get()) >= 0)
        if (!Append(m_frame.get(), samples))
            return false;
    return true;
}

MovieError CFlatSoundDecoder::ReadAll(std::vector<std::uint8_t>& samples) {
    const std::size_t most = mostSeconds * static_cast<std::size_t>(m_rate);
    int code = 0;
    while (samples.size() < most && (code = av_read_frame(m_format.get(), m_packet.get())) >= 0) {
        if (m_packet->stream_index == m_stream && m_packet->size > 0)
            avcodec_send_packet(m_codec.get(), m_packet.get());
        av_packet_unref(m_packet.get());
        if (!TakeFrames(samples))
            return MovieError::FileRead;
    }
    if (code < 0 && code != AVERROR_EOF)
        return MovieError::FileRead;
    avcodec_send_packet(m_codec.get(), nullptr);
    const bool drained = TakeFrames(samples) && Append(nullptr, samples);
    return drained ? MovieError::None : MovieError::FileRead;
}

} // namespace

MovieError ReadMovieSound(const std::string& file, int rate, std::vector<std::uint8_t>& samples) {
    samples.clear();
    CFlatSoundDecoder decoder;
    if (const MovieError error = decoder.Open(file, rate); error != MovieError::None)
        return error;
    const MovieError error = decoder.ReadAll(samples);
    if (error != MovieError::None)
        samples.clear();
    return error;
}

} // namespace velmor
