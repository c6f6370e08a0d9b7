#pragma once

#include "platform/files/Files.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace velmor {

/// Why a movie cannot be opened or read.
enum class MovieError {
    None,
    NoHandler, ///< no part of the system reads this kind of file
    BadFormat, ///< corrupt, or not a movie
    NoMemory,
    FileRead,
    FileOpen,
    NoVideo,        ///< no video stream
    NoDecompressor, ///< the video cannot be decoded here
    NoInformation,  ///< the stream does not say how it is timed
    Unknown
};

struct CMovieStream {
    int width = 0; ///< of the frame rectangle, pixels
    int height = 0;
    int rate = 0; ///< rate / scale is the number of frames a second
    int scale = 1;
    int frameCount = 0; ///< samples of the stream, empty ones included
};

/// A decoded frame: 4 bytes a pixel (blue, green, red, unused), rows packed, the top row first.
struct CMoviePicture {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> bytes;
};

class IMovieDecoder;

/// Reads movies, decoding one frame at a time. Movies that say in their header that a part of each coded frame is
/// only there for the codec are cut to the part that is meant. Any bytes may be opened; nothing is believed.
class CAviReader {
public:
    CAviReader();
    CAviReader(CAviReader&&) noexcept;
    CAviReader& operator=(CAviReader&&) noexcept;
    ~CAviReader();

    /// On failure the reader is closed.
    MovieError Open(const Path& path);
    const CMovieStream& Stream() const;
    /// The frame at a position, 0 to frameCount - 1; an empty sample shows the picture before it. Going on to the
    /// next frame is cheap, going back decodes from the key frame before. False when nothing can be decoded there;
    /// `picture` is then unchanged.
    [[nodiscard]] bool ReadFrame(int position, CMoviePicture& picture);
    bool HasSound() const;
    /// All of the sound as 8-bit unsigned mono at `rate` samples a second; empty when there is none.
    MovieError ReadSound(int rate, std::vector<std::uint8_t>& samples);

private:
    std::unique_ptr<IMovieDecoder> m_decoder;
    CMovieStream m_stream;
    Path m_path;
};

} // namespace velmor
