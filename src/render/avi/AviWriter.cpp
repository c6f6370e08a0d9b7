#include "render/avi/AviWriter.h"

#include "render/avi/AviHeader.h"
#include "render/avi/MsVideo1.h"
#include "sound/SoundFile.h"

#include <algorithm>
#include <new>

namespace velmor {

namespace {

constexpr std::uint64_t mostFileBytes = 0x7fffffff;
constexpr std::size_t pendingLimit = std::size_t{1} << 20;
constexpr std::size_t chunkHeaderBytes = 8;
constexpr std::size_t indexEntryBytes = 16;
constexpr int mostPixels = 32767; // of a side: the header's frame rectangle holds 16-bit numbers
constexpr std::uint32_t keyFrame = 0x10;
constexpr std::string_view videoChunk = "00dc";
constexpr std::string_view soundChunk = "01wb";

constexpr const char* openingFailed = "A disk error occurred while opening the avi file.";
constexpr const char* outOfMemory = "There is not enough memory to create the avi file.";
constexpr const char* unknownError = "An unknown error has occured with avi file.";

bool IsSide(int pixels) {
    return pixels >= 1 && pixels <= mostPixels;
}

} // namespace

template<class Write>
CStatus CAviWriter::Guard(Write write) {
    const char* message = unknownError;
    try {
        if (IsOpen() && write())
            return {};
    } catch (const std::bad_alloc&) {
        message = outOfMemory;
    }
    Reset();
    return CStatus::Failure(message);
}

void CAviWriter::Reset() {
    *this = CAviWriter();
}

CStatus CAviWriter::Open(const Path& path, const CAviSettings& settings) {
    Reset();
    if (!IsSide(settings.width) || !IsSide(settings.height))
        return CStatus::Failure(unknownError);
    m_file = CAtomicFile::Create(path);
    if (!m_file)
        return CStatus::Failure(openingFailed);
    m_settings = settings;
    return {};
}

CStatus CAviWriter::AddSound(std::span<const std::uint8_t> samples) {
    return Guard([&] {
        if (m_started || !m_sound.empty() || samples.size() > mostFileBytes)
            return false;
        m_sound.assign(samples.begin(), samples.end());
        return true;
    });
}

CStatus CAviWriter::WriteFrame(int position, std::span<const std::uint8_t> frame) {
    return Guard([&] {
        if (frame.size() !=
            static_cast<std::size_t>(m_settings.width) * static_cast<std::size_t>(m_settings.height) * 3)
            return false;
        EncodeMsVideo1(frame, m_settings.width, m_settings.height, m_settings.quality, m_settings.background,
                       m_encoded);
        return AppendFrame(position, m_encoded);
    });
}

CStatus CAviWriter::WriteEncodedFrame(int position, std::span<const std::uint8_t> encoded) {
    return Guard([&] { return AppendFrame(position, encoded); });
}

CStatus CAviWriter::Close() {
    if (!IsOpen())
        return {};
    CStatus status = Guard([&] { return Finish(); });
    Reset();
    return status;
}

// Writes the header as a placeholder of the right length.
bool CAviWriter::Start() {
    if (m_started)
        return true;
    m_started = true;
    const std::vector<std::uint8_t> header = MakeAviHeader(m_settings, Counts());
    m_headerBytes = header.size();
    return Append(header);
}

bool CAviWriter::AppendFrame(int position, std::span<const std::uint8_t> encoded) {
    if (position < m_videoSamples || !Start())
        return false;
    const auto emptySamples = static_cast<std::uint64_t>(position - m_videoSamples);
    if (!FitsAfter(encoded.size(), emptySamples + 1))
        return false;
    const auto rate = static_cast<std::uint64_t>(std::max(m_settings.rate, 1));
    while (m_videoSamples <= position) {
        const bool isEmpty = m_videoSamples < position;
        ++m_videoSamples;
        if (!AppendSoundUpTo(static_cast<std::uint64_t>(m_videoSamples) * samplesPerSecond / rate) ||
            !AppendChunk(videoChunk, isEmpty ? std::span<const std::uint8_t>() : encoded, isEmpty ? 0 : keyFrame))
            return false;
    }
    return true;
}

// In pieces of a second at most, so that no player needs a great buffer.
bool CAviWriter::AppendSoundUpTo(std::uint64_t sample) {
    const auto end = static_cast<std::size_t>(std::min<std::uint64_t>(sample, m_sound.size()));
    while (m_soundWritten < end) {
        const std::size_t length = std::min<std::size_t>(samplesPerSecond, end - m_soundWritten);
        if (!AppendChunk(soundChunk, std::span(m_sound).subspan(m_soundWritten, length), keyFrame))
            return false;
        m_soundWritten += length;
    }
    return true;
}

// Whether so many bytes in so many chunks, and the index of all, leave the file within its limit.
bool CAviWriter::FitsAfter(std::uint64_t moreBytes, std::uint64_t moreChunks) const {
    const std::uint64_t chunks = moreChunks * (chunkHeaderBytes + 1 + indexEntryBytes);
    return m_size + m_index.size() + chunkHeaderBytes + moreBytes + chunks <= mostFileBytes;
}

bool CAviWriter::AppendChunk(std::string_view name, std::span<const std::uint8_t> data, std::uint32_t flags) {
    if (!FitsAfter(data.size(), 1))
        return false;
    const auto size = static_cast<std::uint32_t>(data.size());
    PutAviName(m_index, name);
    PutAviInt(m_index, flags);
    PutAviInt(m_index, static_cast<std::uint32_t>(MoviBytes())); // offsets count from the type "movi"
    PutAviInt(m_index, size);

    std::vector<std::uint8_t> header;
    PutAviName(header, name);
    PutAviInt(header, size);
    m_largestChunk = std::max(m_largestChunk, size);
    constexpr std::uint8_t padding = 0;
    return Append(header) && Append(data) && (size % 2 == 0 || Append({&padding, 1}));
}

bool CAviWriter::Append(std::span<const std::uint8_t> bytes) {
    m_pending.insert(m_pending.end(), bytes.begin(), bytes.end());
    m_size += bytes.size();
    return m_pending.size() < pendingLimit || Flush();
}

bool CAviWriter::Flush() {
    const bool done = m_file->Append(m_pending);
    m_pending.clear();
    return done;
}

std::uint64_t CAviWriter::MoviBytes() const {
    return m_size - m_headerBytes + 4;
}

CAviCounts CAviWriter::Counts() const {
    return {.videoSamples = m_videoSamples,
            .soundSamples = static_cast<std::uint32_t>(m_sound.size()),
            .largestChunk = m_largestChunk,
            .moviBytes = MoviBytes()};
}

bool CAviWriter::Finish() {
    if (!Start() || !AppendSoundUpTo(m_sound.size()))
        return false;
    CAviCounts counts = Counts();
    std::vector<std::uint8_t> indexHeader;
    PutAviName(indexHeader, "idx1");
    PutAviInt(indexHeader, static_cast<std::uint32_t>(m_index.size()));
    if (!Append(indexHeader) || !Append(m_index) || !Flush())
        return false;
    counts.fileBytes = m_size;
    return m_file->Overwrite(0, MakeAviHeader(m_settings, counts)) && m_file->Commit();
}

} // namespace velmor
