#include "platform/ffmpeg/SoundDecoder.h"

#include <algorithm>

extern "C" {
#include <libavutil/opt.h>
}

namespace velmor {

namespace {

// Rates outside are no sound, and would make of a small file a very large one.
constexpr int lowestRate = 1000;
constexpr int highestRate = 768000;
constexpr int mostChannels = 64;

// The name that most readers of sound files go by.
std::string ExtensionOf(const AVInputFormat& format, bool isMovie) {
    const std::string name = format.name;
    if (name.starts_with("mov"))
        return isMovie ? ".mov" : ".m4a";
    if (isMovie || name.starts_with("matroska"))
        return ".mka";
    return std::string(1, '.').append(name, 0, std::min<std::size_t>(name.find(','), 6));
}

} // namespace

MovieError CSoundDecoder::Open(const std::string& file, std::uint64_t offset) {
    if (!m_packet || !m_frame)
        return MovieError::NoMemory;
    MovieError error = m_file.Open(file, offset);
    if (error == MovieError::None)
        error = OpenCodec();
    if (error == MovieError::None)
        Describe();
    return error;
}

MovieError CSoundDecoder::OpenCodec() {
    const AVCodecParameters& parameters = *m_file.Stream().codecpar;
    const AVCodec* codec = avcodec_find_decoder(parameters.codec_id);
    if (codec == nullptr)
        return MovieError::NoHandler;
    m_codec.reset(avcodec_alloc_context3(codec));
    if (!m_codec)
        return MovieError::NoMemory;
    if (avcodec_parameters_to_context(m_codec.get(), &parameters) < 0)
        return MovieError::BadFormat;
    m_codec->thread_count = 1;
    m_codec->pkt_timebase = m_file.Stream().time_base; // by which the padding of coders is cut away
    if (avcodec_open2(m_codec.get(), codec, nullptr) < 0)
        return MovieError::NoHandler;
    const bool isSane = m_codec->sample_rate >= lowestRate && m_codec->sample_rate <= highestRate &&
                        m_codec->ch_layout.nb_channels >= 1 && m_codec->ch_layout.nb_channels <= mostChannels;
    return isSane ? MovieError::None : MovieError::BadFormat;
}

void CSoundDecoder::Describe() {
    m_form.coding = avcodec_get_name(m_codec->codec_id);
    m_form.channels = m_codec->ch_layout.nb_channels;
    m_form.rate = m_codec->sample_rate;
    m_form.bits =
        m_codec->bits_per_raw_sample > 0 ? m_codec->bits_per_raw_sample : av_get_bits_per_sample(m_codec->codec_id);
    const std::int64_t duration = m_file.Format().duration;
    m_form.seconds = duration > 0 ? static_cast<double>(duration) / AV_TIME_BASE : 0;
    m_form.isMovie = m_file.HasVideo();
    m_form.extension = ExtensionOf(*m_file.Format().iformat, m_form.isMovie);
}

bool CSoundDecoder::Feed() {
    if (m_isDraining)
        return false;
    av_packet_unref(m_packet.get());
    if (m_file.ReadPacket(*m_packet)) {
        avcodec_send_packet(m_codec.get(), m_packet.get()); // what is damaged is left out
    } else {
        m_isDraining = true;
        avcodec_send_packet(m_codec.get(), nullptr);
    }
    return true;
}

bool CSoundDecoder::IsConverting(const AVFrame& frame) const {
    return m_converter && frame.sample_rate == m_sourceRate && frame.format == m_sourceFormat &&
           frame.ch_layout.nb_channels == m_sourceChannels;
}

bool CSoundDecoder::StartConversion(const CSoundOutput& output) {
    const AVFrame& frame = *m_frame;
    m_converter.reset();
    m_sourceRate = frame.sample_rate;
    m_sourceFormat = frame.format;
    m_sourceChannels = frame.ch_layout.nb_channels;
    if (m_sourceRate < lowestRate || m_sourceRate > highestRate || m_sourceChannels < 1 ||
        m_sourceChannels > mostChannels)
        return false;
    m_doubles = output.channels == 2 && m_sourceChannels == 1;
    AVChannelLayout from{};
    AVChannelLayout to{};
    av_channel_layout_default(&to, m_doubles ? 1 : output.channels);
    if (frame.ch_layout.order == AV_CHANNEL_ORDER_UNSPEC)
        av_channel_layout_default(&from, m_sourceChannels);
    else
        av_channel_layout_copy(&from, &frame.ch_layout);
    SwrContext* converter = nullptr;
    swr_alloc_set_opts2(&converter, &to, AV_SAMPLE_FMT_FLT, output.rate, &from,
                        static_cast<AVSampleFormat>(m_sourceFormat), m_sourceRate, 0, nullptr);
    av_channel_layout_uninit(&from);
    m_converter.reset(converter);
    if (!m_converter)
        return false;
    av_opt_set_double(converter, "rematrix_maxval", 1.0, 0); // channels are mixed without growing louder
    av_opt_set_int(converter, "filter_size", 64, 0);
    av_opt_set_double(converter, "cutoff", 0.97, 0);
    return swr_init(converter) >= 0;
}

bool CSoundDecoder::Convert(const AVFrame* frame, std::vector<float>& samples) {
    const int count = frame != nullptr ? frame->nb_samples : 0;
    const int room = swr_get_out_samples(m_converter.get(), count);
    if (room < 0)
        return false;
    const std::size_t channels = m_doubles ? 1 : static_cast<std::size_t>(m_outputChannels);
    const std::size_t before = samples.size();
    samples.resize(before + static_cast<std::size_t>(room) * static_cast<std::size_t>(m_outputChannels));
    auto* out = reinterpret_cast<std::uint8_t*>(samples.data() + before);
    const auto** in = frame != nullptr ? const_cast<const std::uint8_t**>(frame->extended_data) : nullptr;
    const int written = swr_convert(m_converter.get(), &out, room, in, count);
    const auto got = static_cast<std::size_t>(std::max(written, 0));
    if (m_doubles)
        for (std::size_t i = got; i-- > 0;)
            samples[before + 2 * i] = samples[before + 2 * i + 1] = samples[before + i];
    samples.resize(before + got * (m_doubles ? 2 : channels));
    return written >= 0;
}

bool CSoundDecoder::Read(const CSoundOutput& output, std::vector<float>& samples) {
    m_outputChannels = output.channels;
    const int got = avcodec_receive_frame(m_codec.get(), m_frame.get());
    if (got < 0 && got != AVERROR_EOF && Feed())
        return true; // of a long file without sound the caller hears as well
    if (m_converter && (got < 0 || !IsConverting(*m_frame))) {
        static_cast<void>(Convert(nullptr, samples)); // what it still holds back
        m_converter.reset();
    }
    if (got < 0)
        return false;
    if (m_converter || StartConversion(output))
        static_cast<void>(Convert(m_frame.get(), samples));
    else
        m_converter.reset();
    return true;
}

} // namespace velmor
