#include "platform/ffmpeg/SoundFileInput.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>

namespace velmor {

namespace {

constexpr int bufferBytes = 1 << 16;

// Play lists and the like lead to other files, and to the network.
constexpr const char* readers = "wav,w64,aiff,au,caf,flac,ogg,mp3,aac,ac3,eac3,amr,ape,wv,tta,mov,matroska,avi,"
                                "mpeg,mpegts,asf,flv,mxf";

} // namespace

CSoundFileInput::~CSoundFileInput() {
    m_format.reset(); // which reads until then
    if (m_io != nullptr)
        av_freep(&m_io->buffer);
    avio_context_free(&m_io);
}

int CSoundFileInput::Read(std::uint8_t* bytes, int count) {
    const std::int64_t length = std::min<std::int64_t>(count, m_size - m_position);
    if (length <= 0)
        return AVERROR_EOF;
    m_file.clear();
    m_file.seekg(m_offset + m_position);
    m_file.read(reinterpret_cast<char*>(bytes), length);
    const std::int64_t got = m_file.gcount();
    m_position += got;
    m_failed |= got < length;
    return got > 0 ? static_cast<int>(got) : AVERROR(EIO);
}

std::int64_t CSoundFileInput::Seek(std::int64_t offset, int whence) {
    if ((whence & AVSEEK_SIZE) != 0)
        return m_size;
    if (whence == SEEK_CUR)
        offset += m_position;
    else if (whence == SEEK_END)
        offset += m_size;
    if (offset < 0)
        return AVERROR(EINVAL);
    return m_position = offset;
}

MovieError CSoundFileInput::Open(const std::string& file, std::uint64_t offset) {
    av_log_set_level(AV_LOG_QUIET); // what the user is to know is returned
    const std::filesystem::path path(std::u8string(file.begin(), file.end()));
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    m_file.open(path, std::ios::binary);
    if (error || !m_file || size < offset)
        return MovieError::FileOpen;
    m_offset = static_cast<std::int64_t>(offset);
    m_size = static_cast<std::int64_t>(size - offset);
    auto* buffer = static_cast<unsigned char*>(av_malloc(bufferBytes));
    if (buffer != nullptr)
        m_io = avio_alloc_context(
            buffer, bufferBytes, 0, this,
            [](void* self, std::uint8_t* bytes, int count) {
                return static_cast<CSoundFileInput*>(self)->Read(bytes, count);
            },
            nullptr,
            [](void* self, std::int64_t to, int whence) {
                return static_cast<CSoundFileInput*>(self)->Seek(to, whence);
            });
    if (m_io == nullptr) {
        av_free(buffer);
        return MovieError::NoMemory;
    }
    return OpenStream() ? MovieError::None : m_failed ? MovieError::FileRead : MovieError::BadFormat;
}

bool CSoundFileInput::OpenStream() {
    AVFormatContext* format = avformat_alloc_context();
    if (format == nullptr)
        return false;
    format->pb = m_io;
    format->flags |= AVFMT_FLAG_CUSTOM_IO;
    format->format_whitelist = av_strdup(readers);
    // On failure the context is freed.
    if (avformat_open_input(&format, "", nullptr, nullptr) < 0)
        return false;
    m_format.reset(format);
    if (avformat_find_stream_info(format, nullptr) < 0)
        return false;
    m_stream = av_find_best_stream(format, AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0);
    if (m_stream < 0)
        return false;
    for (unsigned i = 0; i < format->nb_streams; ++i)
        if (static_cast<int>(i) != m_stream)
            format->streams[i]->discard = AVDISCARD_ALL;
    return true;
}

bool CSoundFileInput::HasVideo() const {
    const std::span streams(m_format->streams, m_format->nb_streams);
    return std::ranges::any_of(streams, [](const AVStream* stream) {
        return stream->codecpar->codec_type == AVMEDIA_TYPE_VIDEO &&
               (stream->disposition & AV_DISPOSITION_ATTACHED_PIC) == 0;
    });
}

bool CSoundFileInput::ReadPacket(AVPacket& packet) {
    while (av_read_frame(m_format.get(), &packet) >= 0) {
        if (packet.stream_index == m_stream && packet.size > 0)
            return true;
        av_packet_unref(&packet);
    }
    return false;
}

} // namespace velmor
