#include "platform/movie/MovieWriter.h"

#include "platform/files/AtomicFile.h"
#include "platform/movie/MovieLibrary.h"

#include <new>

namespace velmor {

namespace {

class CMovieBytes final : public IMovieBytes {
public:
    explicit CMovieBytes(CAtomicFile file) : m_file(std::move(file)) {}

    bool Append(std::span<const std::uint8_t> bytes) override { return m_file.Append(bytes); }
    bool Overwrite(std::uint64_t position, std::span<const std::uint8_t> bytes) override {
        return m_file.Overwrite(position, bytes);
    }
    std::uint64_t Size() const override { return m_file.Size(); }
    std::string Name() const override { return Utf8Of(m_file.Temporary()); }
    bool Commit() { return m_file.Commit(); }

private:
    CAtomicFile m_file;
};

} // namespace

/// The file and what encodes into it, which is given back first.
class CMovieWriter::CImpl {
public:
    MovieWriteError Open(const Path& path, CMovieFormat format, const CMovieSoundTrack& sound);
    MovieWriteError WriteFrame(int position, std::span<const std::uint8_t> frame) {
        return m_encoder->WriteFrame(position, frame);
    }
    MovieWriteError Close(int length);

private:
    std::optional<CMovieBytes> m_file;
    std::unique_ptr<IMovieEncoder> m_encoder;
};

MovieWriteError CMovieWriter::CImpl::Open(const Path& path, CMovieFormat format, const CMovieSoundTrack& sound) {
    if (format.container == MovieContainer::Mp4 && format.encoder.empty())
        format.encoder = Mp4Encoder();
    if (!HasMovieEncoder(format.encoder))
        return MovieWriteError::NoEncoder;
    std::optional<CAtomicFile> file = CAtomicFile::Create(path);
    if (!file)
        return MovieWriteError::FileOpen;
    m_encoder = MovieLibrary()->MakeEncoder();
    return m_encoder->Open(m_file.emplace(std::move(*file)), format, sound);
}

MovieWriteError CMovieWriter::CImpl::Close(int length) {
    const MovieWriteError error = m_encoder->Close(length);
    if (error != MovieWriteError::None)
        return error;
    return m_file->Commit() ? MovieWriteError::None : MovieWriteError::FileWrite;
}

bool HasMovieEncoder(const std::string& encoder) {
    const IMovieLibrary* library = MovieLibrary();
    return library != nullptr && library->HasEncoder(encoder);
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
