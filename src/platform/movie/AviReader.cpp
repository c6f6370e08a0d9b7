#include "platform/movie/AviReader.h"

#include "platform/movie/MovieLibrary.h"

#include <new>

namespace velmor {

CAviReader::CAviReader() = default;
CAviReader::CAviReader(CAviReader&&) noexcept = default;
CAviReader& CAviReader::operator=(CAviReader&&) noexcept = default;
CAviReader::~CAviReader() = default;

MovieError CAviReader::Open(const Path& path) {
    m_stream = {};
    m_path = path;
    try {
        const IMovieLibrary* library = MovieLibrary();
        if (library == nullptr)
            return MovieError::NoHandler;
        m_decoder = library->MakeDecoder();
        MovieError error = m_decoder->Open(Utf8Of(path));
        if (error == MovieError::None) {
            m_stream = m_decoder->Describe(FrameRectangleOf(path));
            if (m_stream.rate == 0)
                error = MovieError::NoInformation;
        }
        if (error != MovieError::None)
            m_decoder.reset();
        return error;
    } catch (const std::bad_alloc&) {
        m_decoder.reset();
        return MovieError::NoMemory;
    }
}

const CMovieStream& CAviReader::Stream() const {
    return m_stream;
}

bool CAviReader::ReadFrame(int position, CMoviePicture& picture) {
    try {
        return m_decoder && position >= 0 && position < m_stream.frameCount &&
               m_decoder->ReadFrame(position, picture);
    } catch (const std::bad_alloc&) {
        return false;
    }
}

bool CAviReader::HasSound() const {
    return m_decoder && m_decoder->HasSound();
}

MovieError CAviReader::ReadSound(int rate, std::vector<std::uint8_t>& samples) {
    samples.clear();
    if (!HasSound())
        return MovieError::None;
    try {
        return MovieLibrary()->ReadSound(Utf8Of(m_path), rate, samples);
    } catch (const std::bad_alloc&) {
        samples.clear();
        return MovieError::NoMemory;
    }
}

} // namespace velmor
