#include "platform/movie/MovieWriter.h"

#include "platform/movie/MovieFile.h"
#include "platform/movie/MovieStreams.h"

#include <new>

extern "C" {
#include <libavutil/opt.h>
}

namespace velmor {

/// The file and its streams, which are given back in the reverse order.
class CMovieWriter::CImpl {
public:
    MovieWriteError Open(const Path& path, CMovieFormat format, const CMovieSoundTrack& sound);
    MovieWriteError WriteFrame(int position, std::span<const std::uint8_t> frame);
    MovieWriteError Close(int length);

private:
    MovieWriteError MakeContainer();
    MovieWriteError Start();
    /// What a step comes to, errors that FFmpeg met in the file and kept to itself included.
    MovieWriteError Result(bool done) {
        return done && m_file.IsSound() ? MovieWriteError::None : MovieWriteError::FileWrite;
    }
    bool EncodeFrame();
    bool RepeatUntil(int position);
    /// Samples of the sound in the time before a frame.
    std::size_t SamplesBefore(int position) const;

    CMovieFormat m_movie;
    int m_soundRate = 0;
    int m_next = 0; ///< position of the next frame
    CMovieFile m_file;
    CFfmpegOutput m_format;
    CVideoStream m_video;
    std::optional<CSoundStream> m_sound;
};

MovieWriteError CMovieWriter::CImpl::Open(const Path& path, CMovieFormat format, const CMovieSoundTrack& sound) {
    av_log_set_level(AV_LOG_QUIET); // what the user is to know is returned
    m_movie = std::move(format);
    if (m_movie.container == MovieContainer::Mp4 && m_movie.encoder.empty())
        m_movie.encoder = Mp4Encoder();
    if (!HasMovieEncoder(m_movie.encoder))
        return MovieWriteError::NoEncoder;
    if (!m_file.Create(path))
        return MovieWriteError::FileOpen;
    MovieWriteError error = MakeContainer();
    if (error == MovieWriteError::None)
        error = m_video.Open(*m_format, m_movie);
    if (error == MovieWriteError::None && !sound.samples.empty()) {
        m_soundRate = sound.rate;
        error = m_sound.emplace().Open(*m_format, sound, m_movie.container);
    }
    return error == MovieWriteError::None ? Start() : error;
}

MovieWriteError CMovieWriter::CImpl::MakeContainer() {
    AVFormatContext* format = nullptr;
    avformat_alloc_output_context2(&format, nullptr, m_movie.container == MovieContainer::Mp4 ? "mp4" : "avi",
                                   m_file.Address().c_str());
    m_format.reset(format);
    if (!m_format)
        return MovieWriteError::NoEncoder;
    m_format->pb = m_file.Stream();
    m_format->flags |= AVFMT_FLAG_BITEXACT | AVFMT_FLAG_CUSTOM_IO;
    return MovieWriteError::None;
}

MovieWriteError CMovieWriter::CImpl::Start() {
    if (m_movie.container == MovieContainer::Mp4) // its index in front, so that playing starts before all is loaded
        av_opt_set(m_format->priv_data, "movflags", "+faststart", 0);
    else
        av_opt_set(m_format->priv_data, "flipped_raw_rgb", "1", 0);
    return Result(avformat_write_header(m_format.get(), nullptr) >= 0);
}

bool CMovieWriter::CImpl::EncodeFrame() {
    if (!m_video.Encode(m_next++))
        return false;
    return !m_sound || m_sound->WriteUpTo(SamplesBefore(m_next));
}

std::size_t CMovieWriter::CImpl::SamplesBefore(int position) const {
    return static_cast<std::size_t>(position) * static_cast<std::size_t>(m_soundRate) /
           static_cast<std::size_t>(std::max(m_movie.rate, 1));
}

bool CMovieWriter::CImpl::RepeatUntil(int position) {
    if (m_movie.container == MovieContainer::Avi) {
        m_next = std::max(m_next, position);
        return true;
    }
    while (m_next > 0 && m_next < position)
        if (!EncodeFrame())
            return false;
    return true;
}

MovieWriteError CMovieWriter::CImpl::WriteFrame(int position, std::span<const std::uint8_t> frame) {
    if (position < m_next)
        return MovieWriteError::FileWrite;
    return Result(RepeatUntil(position) && m_video.Convert(frame) && EncodeFrame());
}

MovieWriteError CMovieWriter::CImpl::Close(int length) {
    const bool done = (m_movie.container == MovieContainer::Avi || RepeatUntil(length)) && m_video.Finish() &&
                      (!m_sound || m_sound->Finish(SamplesBefore(length))) && av_write_trailer(m_format.get()) >= 0;
    return Result(done && m_file.Commit());
}

bool HasMovieEncoder(const std::string& encoder) {
    const AVCodec* codec = avcodec_find_encoder_by_name(encoder.c_str());
    return codec != nullptr && codec->type == AVMEDIA_TYPE_VIDEO;
}

std::string Mp4Encoder() {
    for (const char* encoder : {"libx264", "libopenh264"})
        if (HasMovieEncoder(encoder))
            return encoder;
    return {};
}

CMovieWriter::CMovieWriter() = default;
CMovieWriter::CMovieWriter(CMovieWriter&&) noexcept = default;
CMovieWriter& CMovieWriter::operator=(CMovieWriter&&) noexcept = default;
CMovieWriter::~CMovieWriter() = default;

template<class Step>
MovieWriteError CMovieWriter::Guard(Step step) {
    MovieWriteError error = MovieWriteError::FileWrite;
    try {
        if (m_impl)
            error = step();
    } catch (const std::bad_alloc&) {
        error = MovieWriteError::NoMemory;
    }
    if (error != MovieWriteError::None)
        m_impl.reset();
    return error;
}

MovieWriteError CMovieWriter::Open(const Path& path, const CMovieFormat& format, const CMovieSoundTrack& sound) {
    m_impl = std::make_unique<CImpl>();
    return Guard([&] { return m_impl->Open(path, format, sound); });
}

MovieWriteError CMovieWriter::WriteFrame(int position, std::span<const std::uint8_t> frame) {
    return Guard([&] { return m_impl->WriteFrame(position, frame); });
}

MovieWriteError CMovieWriter::Close(int length) {
    const MovieWriteError error = Guard([&] { return m_impl->Close(length); });
    m_impl.reset();
    return error;
}

} // namespace velmor
