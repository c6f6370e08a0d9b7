#pragma once

#include "platform/files/Files.h"

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace velmor {

enum class MovieContainer { Avi, Mp4 };

/// What a movie is written as.
struct CMovieFormat {
    MovieContainer container = MovieContainer::Mp4;
    std::string encoder; ///< FFmpeg's name; empty in an MP4: the H.264 encoder that the system has
    int width = 0;       ///< pixels
    int height = 0;
    int rate = 25;                            ///< frames per second
    int quality = 10000;                      ///< 0 to 10000, for encoders that lose something
    std::array<std::uint8_t, 3> background{}; ///< blue green red, beside a frame whose size the codec cannot take
};

/// The sound of a whole movie: 8-bit unsigned mono samples, `rate` a second. Without samples there is none.
struct CMovieSoundTrack {
    std::span<const std::uint8_t> samples;
    int rate = 22050;
    /// For an MP4, in their place: left and right in turn, 1.0 for full scale. They outlive the writing.
    std::span<const float> stereo{};
};

enum class MovieWriteError {
    None,
    NoEncoder, ///< not on this system, or not for such frames
    NoMemory,
    FileOpen,
    FileWrite
};

/// Whether a movie can be made with the encoder of that name here.
bool HasMovieEncoder(const std::string& encoder);
/// The encoder of MP4 files, empty when the system has none.
std::string Mp4Encoder();

/// Writes movies with FFmpeg's encoders: AVI with frames that are all key frames, MP4 (H.264, sound as AAC) with
/// its index in front. The same input gives the same bytes on any number of processors. The file appears under its
/// name only when Close() has succeeded; after any failure, or without a Close(), nothing of it is left.
class CMovieWriter {
public:
    CMovieWriter();
    CMovieWriter(CMovieWriter&&) noexcept;
    CMovieWriter& operator=(CMovieWriter&&) noexcept;
    ~CMovieWriter();

    MovieWriteError Open(const Path& path, const CMovieFormat& format, const CMovieSoundTrack& sound = {});
    /// A frame of width x height x 3 bytes (blue green red, bottom row first) at a position that is higher than the
    /// one before. A frame stands until the next one: an AVI has empty samples there, an MP4 repeats it.
    MovieWriteError WriteFrame(int position, std::span<const std::uint8_t> frame);
    /// Completes the movie, whose sound ends after `length` frames. In an MP4 the last frame stands until then.
    MovieWriteError Close(int length);

private:
    class CImpl;
    /// Runs `step`; after a failure the writer is closed.
    template<class Step>
    MovieWriteError Guard(Step step);

    std::unique_ptr<CImpl> m_impl;
};

} // namespace velmor
