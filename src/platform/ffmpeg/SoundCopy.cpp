#include "platform/ffmpeg/SoundCopy.h"

#include "platform/ffmpeg/MovieFile.h"
#include "platform/ffmpeg/SoundFileInput.h"

#include <string_view>

namespace velmor {

namespace {

/// The file that is appended to counts from its own beginning.
class CAppendedBytes final : public IMovieBytes {
public:
    explicit CAppendedBytes(IMovieBytes& file) : m_file(file), m_start(file.Size()) {}
    bool Append(std::span<const std::uint8_t> bytes) override { return m_file.Append(bytes); }
    bool Overwrite(std::uint64_t position, std::span<const std::uint8_t> bytes) override {
        return m_file.Overwrite(m_start + position, bytes);
    }
    std::uint64_t Size() const override { return m_file.Size() - m_start; }
    std::string Name() const override { return m_file.Name(); }

private:
    IMovieBytes& m_file;
    std::uint64_t m_start;
};

bool CopyPackets(CSoundFileInput& input, AVFormatContext& format, AVStream& stream) {
    CFfmpegHandle<AVPacket> packet(av_packet_alloc());
    while (packet && input.ReadPacket(*packet)) {
        packet->stream_index = 0;
        packet->pos = -1;
        av_packet_rescale_ts(packet.get(), input.Stream().time_base, stream.time_base);
        const bool written = av_interleaved_write_frame(&format, packet.get()) >= 0;
        av_packet_unref(packet.get());
        if (!written)
            return false;
    }
    return packet && input.IsSound();
}

} // namespace

MovieError CopySoundStream(const std::string& movie, IMovieBytes& to) {
    CSoundFileInput input;
    if (const MovieError error = input.Open(movie, 0); error != MovieError::None)
        return error;
    CAppendedBytes bytes(to);
    CMovieFile file;
    if (!file.Open(bytes))
        return MovieError::NoMemory;
    AVFormatContext* made = nullptr;
    // Of what a coder puts before the sound itself, and players leave out, QuickTime's edit list alone tells.
    const bool isQuickTime = std::string_view(input.Format().iformat->name).starts_with("mov");
    avformat_alloc_output_context2(&made, nullptr, isQuickTime ? "mov" : "matroska", nullptr);
    const CFfmpegOutput format(made);
    AVStream* stream = format ? avformat_new_stream(made, nullptr) : nullptr;
    if (stream == nullptr)
        return MovieError::NoHandler;
    format->pb = file.Stream();
    format->flags |= AVFMT_FLAG_BITEXACT | AVFMT_FLAG_CUSTOM_IO;
    if (avcodec_parameters_copy(stream->codecpar, input.Stream().codecpar) < 0)
        return MovieError::NoMemory;
    stream->codecpar->codec_tag = 0;
    stream->time_base = input.Stream().time_base;
    const bool done = avformat_write_header(made, nullptr) >= 0 && CopyPackets(input, *format, *stream) &&
                      av_write_trailer(made) >= 0 && file.Finish();
    return done ? MovieError::None : MovieError::FileRead;
}

} // namespace velmor
