#include "platform/ffmpeg/MovieFile.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>

namespace velmor {

namespace {

constexpr int bufferBytes = 1 << 18;

#if LIBAVFORMAT_VERSION_MAJOR < 61
using WrittenBytes = std::uint8_t*;
#else
using WrittenBytes = const std::uint8_t*;
#endif

} // namespace

CMovieFile::~CMovieFile() {
    if (m_stream != nullptr)
        av_freep(&m_stream->buffer);
    avio_context_free(&m_stream);
}

bool CMovieFile::Open(IMovieBytes& file) {
    m_file = &file;
    const auto write = [](void* self, WrittenBytes bytes, int count) {
        const std::span<const std::uint8_t> written(bytes, static_cast<std::size_t>(count));
        return static_cast<CMovieFile*>(self)->Write(written) ? count : AVERROR(EIO);
    };
    const auto seek = [](void* self, std::int64_t offset, int whence) {
        return static_cast<CMovieFile*>(self)->Seek(offset, whence);
    };
    auto* buffer = static_cast<unsigned char*>(av_malloc(bufferBytes));
    if (buffer != nullptr)
        m_stream = avio_alloc_context(buffer, bufferBytes, 1, this, nullptr, write, seek);
    if (m_stream == nullptr)
        av_free(buffer);
    return m_stream != nullptr;
}

std::string CMovieFile::Address() const {
    return "file:" + m_file->Name();
}

// As with any file, what is written past the end leaves a gap of zeros.
bool CMovieFile::Write(std::span<const std::uint8_t> bytes) {
    constexpr std::array<std::uint8_t, 4096> zeros{};
    while (m_position > m_file->Size())
        if (!m_file->Append(std::span(zeros).first(
                static_cast<std::size_t>(std::min<std::uint64_t>(zeros.size(), m_position - m_file->Size())))))
            return false;
    const auto inside =
        static_cast<std::size_t>(std::min<std::uint64_t>(bytes.size(), m_file->Size() - m_position));
    if (!m_file->Overwrite(m_position, bytes.first(inside)) || !m_file->Append(bytes.subspan(inside)))
        return false;
    m_position += bytes.size();
    return true;
}

std::int64_t CMovieFile::Seek(std::int64_t offset, int whence) {
    const auto size = static_cast<std::int64_t>(m_file->Size());
    if ((whence & AVSEEK_SIZE) != 0)
        return size;
    if (whence == SEEK_CUR)
        offset += static_cast<std::int64_t>(m_position);
    else if (whence == SEEK_END)
        offset += size;
    if (offset < 0)
        return AVERROR(EINVAL);
    m_position = static_cast<std::uint64_t>(offset);
    return offset;
}

bool CMovieFile::IsSound() {
    return m_stream->error >= 0;
}

bool CMovieFile::Finish() {
    avio_flush(m_stream);
    return IsSound();
}

} // namespace velmor
