#pragma once

#include "platform/files/Files.h"
#include "platform/movie/AviReader.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace velmor {

/// How the sound of a file is coded.
struct CSoundForm {
    std::string coding; ///< FFmpeg's name: "flac", "pcm_s16le"
    int channels = 0;
    int rate = 0;          ///< samples per second
    int bits = 0;          ///< of a sample; 0 where the coding has none
    double seconds = 0;    ///< as the file says; 0 when it does not
    std::string extension; ///< that a file of this sound alone has, with its dot
    bool isMovie = false;  ///< there are pictures beside the sound, a cover excepted
};

/// What Read() gives.
struct CSoundOutput {
    int rate = 48000;
    int channels = 2; ///< 1 or 2
};

class CAtomicFile;
class ISoundDecoder;

/// Decodes the sound of any file (WAV, FLAC, Ogg, MP3, AAC, the sound of a movie), a piece at a time, so that
/// whoever reads bounds length and memory and stops when they like. Any bytes may be opened; nothing is believed,
/// and no file but the one opened is read.
class CSoundReader {
public:
    CSoundReader();
    CSoundReader(CSoundReader&&) noexcept;
    CSoundReader& operator=(CSoundReader&&) noexcept;
    ~CSoundReader();

    /// `offset`: where the sound begins in the file. On failure the reader is closed.
    MovieError Open(const Path& path, std::uint64_t offset = 0);
    const CSoundForm& Form() const;
    /// Appends the next piece to `samples`: those of the channels in turn, 1.0 for full scale. More channels than
    /// asked for are mixed so that they cannot exceed what the loudest of them could; one is given on both. False
    /// at the end, and when memory runs out (`IsWhole()` is then false as well). Damaged pieces are left out.
    [[nodiscard]] bool Read(const CSoundOutput& output, std::vector<float>& samples);
    /// Whether the file could be read so far; what is damaged in it counts as read.
    bool IsWhole() const { return m_isWhole; }

private:
    std::unique_ptr<ISoundDecoder> m_decoder;
    bool m_isWhole = true;
};

/// Copies the sound of a movie as it is coded, without the pictures: appends a file of it, with the extension that
/// its form names, to `file`.
MovieError CopyMovieSound(const Path& movie, CAtomicFile& file);

} // namespace velmor
