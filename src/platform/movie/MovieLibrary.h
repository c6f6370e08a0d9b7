#pragma once

#include "platform/camera/CaptureInput.h"
#include "platform/movie/AviFrameRectangle.h"
#include "platform/movie/AviReader.h"
#include "platform/movie/MovieWriter.h"
#include "platform/movie/SoundReader.h"

namespace velmor {

/// The file of a movie that is written.
class IMovieBytes {
public:
    virtual ~IMovieBytes() = default;
    [[nodiscard]] virtual bool Append(std::span<const std::uint8_t> bytes) = 0;
    /// Replaces bytes that have been appended.
    [[nodiscard]] virtual bool Overwrite(std::uint64_t position, std::span<const std::uint8_t> bytes) = 0;
    virtual std::uint64_t Size() const = 0;
    /// Where what has been written so far can be read, in UTF-8.
    virtual std::string Name() const = 0;
};

/// Encodes one movie. Calls may throw std::bad_alloc; after a failure there are no more.
class IMovieEncoder {
public:
    virtual ~IMovieEncoder() = default;
    /// `file` outlives the encoder.
    virtual MovieWriteError Open(IMovieBytes& file, const CMovieFormat& format, const CMovieSoundTrack& sound) = 0;
    virtual MovieWriteError WriteFrame(int position, std::span<const std::uint8_t> frame) = 0;
    /// The file is complete after it.
    virtual MovieWriteError Close(int length) = 0;
};

/// Decodes one movie. Calls may throw std::bad_alloc.
class IMovieDecoder {
public:
    virtual ~IMovieDecoder() = default;
    virtual MovieError Open(const std::string& file) = 0;
    /// `rectangle` is what an AVI file says of the part of a coded frame that is meant. The rate is 0 where the
    /// stream does not say how it is timed.
    virtual CMovieStream Describe(const std::optional<CFrameRectangle>& rectangle) = 0;
    [[nodiscard]] virtual bool ReadFrame(int position, CMoviePicture& picture) = 0;
    virtual bool HasSound() const = 0;
};

/// Decodes the sound of one file. Calls may throw std::bad_alloc.
class ISoundDecoder {
public:
    virtual ~ISoundDecoder() = default;
    virtual MovieError Open(const std::string& file, std::uint64_t offset) = 0;
    virtual const CSoundForm& Form() const = 0;
    /// False at the end. `output` is the same at each call.
    [[nodiscard]] virtual bool Read(const CSoundOutput& output, std::vector<float>& samples) = 0;
    /// Whether the file itself could be read up to here.
    virtual bool IsFileSound() const = 0;
};

/// What decodes and encodes movies and reads cameras. It brings well over a hundred shared libraries along, so it
/// is loaded when it is first used. File names are in UTF-8.
class IMovieLibrary {
public:
    virtual ~IMovieLibrary() = default;
    virtual bool HasEncoder(const std::string& encoder) const = 0;
    virtual std::unique_ptr<IMovieEncoder> MakeEncoder() const = 0;
    virtual std::unique_ptr<IMovieDecoder> MakeDecoder() const = 0;
    /// Decodes the whole sound of a movie to 8-bit unsigned mono samples. Throws std::bad_alloc.
    virtual MovieError ReadSound(const std::string& file, int rate, std::vector<std::uint8_t>& samples) const = 0;
    virtual std::unique_ptr<ISoundDecoder> MakeSoundDecoder() const = 0;
    /// Appends a file with the sound of a movie as it is coded there to `to`.
    virtual MovieError CopySound(const std::string& movie, IMovieBytes& to) const = 0;
    /// `wanted`: width 0 leaves the format to the device. Null when the source cannot be opened.
    virtual std::unique_ptr<ICaptureInput> OpenCapture(const CCaptureSource& source,
                                                       const CCaptureFormat& wanted) const = 0;
};

/// Null where it cannot be loaded: then there are no movies but our own, and no cameras.
const IMovieLibrary* MovieLibrary();

} // namespace velmor
