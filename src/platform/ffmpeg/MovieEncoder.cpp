#include "platform/ffmpeg/MovieEncoder.h"

#include <algorithm>

extern "C" {
#include <libavutil/opt.h>
}

namespace velmor {

MovieWriteError CMovieEncoder::Open(IMovieBytes& file, const CMovieFormat& format, const CMovieSoundTrack& sound) {
    av_log_set_level(AV_LOG_QUIET); // what the user is to know is returned
    m_movie = format;
    if (!m_file.Open(file))
        return MovieWriteError::NoMemory;
    MovieWriteError error = MakeContainer();
    if (error == MovieWriteError::None)
        error = m_video.Open(*m_format, m_movie);
    if (error == MovieWriteError::None && (!sound.samples.empty() || !sound.stereo.empty())) {
        m_soundRate = sound.rate;
        error = m_sound.emplace().Open(*m_format, sound, m_movie.container);
    }
    return error == MovieWriteError::None ? Start() : error;
}

MovieWriteError CMovieEncoder::MakeContainer() {
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

MovieWriteError CMovieEncoder::Start() {
    if (m_movie.container == MovieContainer::Mp4) // its index in front, so that playing starts before all is loaded
        av_opt_set(m_format->priv_data, "movflags", "+faststart", 0);
    else
        av_opt_set(m_format->priv_data, "flipped_raw_rgb", "1", 0);
    return Result(avformat_write_header(m_format.get(), nullptr) >= 0);
}

bool CMovieEncoder::EncodeFrame() {
    if (!m_video.Encode(m_next++))
        return false;
    return !m_sound || m_sound->WriteUpTo(SamplesBefore(m_next));
}

std::size_t CMovieEncoder::SamplesBefore(int position) const {
    return static_cast<std::size_t>(position) * static_cast<std::size_t>(m_soundRate) /
           static_cast<std::size_t>(std::max(m_movie.rate, 1));
}

bool CMovieEncoder::RepeatUntil(int position) {
    if (m_movie.container == MovieContainer::Avi) {
        m_next = std::max(m_next, position);
        return true;
    }
    while (m_next > 0 && m_next < position)
        if (!EncodeFrame())
            return false;
    return true;
}

MovieWriteError CMovieEncoder::WriteFrame(int position, std::span<const std::uint8_t> frame) {
    if (position < m_next)
        return MovieWriteError::FileWrite;
    return Result(RepeatUntil(position) && m_video.Convert(frame) && EncodeFrame());
}

MovieWriteError CMovieEncoder::Close(int length) {
    const bool done = (m_movie.container == MovieContainer::Avi || RepeatUntil(length)) && m_video.Finish() &&
                      (!m_sound || m_sound->Finish(SamplesBefore(length))) && av_write_trailer(m_format.get()) >= 0;
    return Result(done && m_file.Finish());
}

} // namespace velmor
