#include "platform/movie/SoundReader.h"

#include "platform/files/AtomicFile.h"
#include "platform/movie/MovieLibrary.h"

#include <new>

namespace velmor {

namespace {

class CAppendedTo final : public IMovieBytes {
public:
    explicit CAppendedTo(CAtomicFile& file) : m_file(file) {}
    bool Append(std::span<const std::uint8_t> bytes) override { return m_file.Append(bytes); }
    bool Overwrite(std::uint64_t position, std::span<const std::uint8_t> bytes) override {
        return m_file.Overwrite(position, bytes);
    }
    std::uint64_t Size() const override { return m_file.Size(); }
    std::string Name() const override { return Utf8Of(m_file.Temporary()); }

private:
    CAtomicFile& m_file;
};

} // namespace

CSoundReader::CSoundReader() = default;
CSoundReader::CSoundReader(CSoundReader&&) noexcept = default;
CSoundReader& CSoundReader::operator=(CSoundReader&&) noexcept = default;
CSoundReader::~CSoundReader() = default;

MovieError CSoundReader::Open(const Path& path, std::uint64_t offset) {
    m_decoder.reset();
    m_isWhole = true;
    if (!IdentifyFile(path))
        return MovieError::FileOpen; // a pipe or a device would be waited for
    try {
        const IMovieLibrary* library = MovieLibrary();
        if (library == nullptr)
            return MovieError::NoHandler;
        std::unique_ptr<ISoundDecoder> decoder = library->MakeSoundDecoder();
        const MovieError error = decoder->Open(Utf8Of(path), offset);
        if (error == MovieError::None)
            m_decoder = std::move(decoder);
        return error;
    } catch (const std::bad_alloc&) {
        return MovieError::NoMemory;
    }
}

const CSoundForm& CSoundReader::Form() const {
    return m_decoder->Form();
}

bool CSoundReader::Read(const CSoundOutput& output, std::vector<float>& samples) {
    try {
        if (!m_decoder || m_decoder->Read(output, samples))
            return m_decoder != nullptr;
        m_isWhole = m_decoder->IsFileSound();
    } catch (const std::bad_alloc&) {
        m_isWhole = false;
    }
    return false;
}

MovieError CopyMovieSound(const Path& movie, CAtomicFile& file) {
    try {
        const IMovieLibrary* library = MovieLibrary();
        CAppendedTo bytes(file);
        return library != nullptr ? library->CopySound(Utf8Of(movie), bytes) : MovieError::NoHandler;
    } catch (const std::bad_alloc&) {
        return MovieError::NoMemory;
    }
}

} // namespace velmor
