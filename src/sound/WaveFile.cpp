#include "sound/WaveFile.h"

#include "sound/SoundFile.h"

#include <algorithm>
#include <limits>
#include <new>
#include <optional>
#include <span>
#include <string_view>

namespace velmor {

namespace {

using Bytes = std::span<const std::uint8_t>;

// A chunk of the RIFF format that Microsoft and IBM published in 1991: four characters, a 32-bit size, the data.
// The next chunk stands at an even offset.
struct CChunk {
    std::uint64_t data = 0; ///< offset of the data in the file
    std::uint64_t size = 0; ///< as the header says, whether the bytes are there or not

    std::uint64_t Next() const { return data + size + (size & 1); }
    bool IsWhole(Bytes file) const { return data <= file.size() && size <= file.size() - data; }
};

std::uint32_t ReadLittleEndian(Bytes bytes, std::uint64_t offset, int count) {
    std::uint32_t value = 0;
    for (int i = 0; i < count; ++i)
        value |= static_cast<std::uint32_t>(bytes[static_cast<std::size_t>(offset) + static_cast<std::size_t>(i)])
                 << 8 * i;
    return value;
}

bool HasName(Bytes file, std::uint64_t offset, std::string_view name) {
    return offset + name.size() <= file.size() &&
           std::equal(name.begin(), name.end(), file.begin() + static_cast<std::ptrdiff_t>(offset),
                      [](char a, std::uint8_t b) { return static_cast<std::uint8_t>(a) == b; });
}

// The first chunk called `name`, and of form `form` when one is given, that starts at `from` or later and before
// `end`.
std::optional<CChunk> FindChunk(Bytes file, std::uint64_t from, std::uint64_t end, std::string_view name,
                                std::string_view form = {}) {
    while (from < end && from + 8 <= file.size()) {
        const CChunk chunk{from + 8, ReadLittleEndian(file, from + 4, 4)};
        if (HasName(file, from, name) && HasName(file, chunk.data, form))
            return chunk;
        from = chunk.Next();
    }
    return std::nullopt;
}

CStatus Corrupt() {
    return CStatus::Failure("Corrupt audio file!");
}

CStatus CheckFormat(Bytes file, const CChunk& format, int& rate) {
    constexpr std::uint64_t smallestFormat = 16;
    if (format.size < smallestFormat || !format.IsWhole(file))
        return Corrupt();
    const std::uint32_t tag = ReadLittleEndian(file, format.data, 2);
    const std::uint32_t channels = ReadLittleEndian(file, format.data + 2, 2);
    const std::uint32_t bitsPerSample = ReadLittleEndian(file, format.data + 14, 2);
    if (tag != 1 || channels != 1 || bitsPerSample != 8)
        return CStatus::Failure("Unsupported audio file!\n(8bit Mono PCM encoded wave files are supported)");
    const std::uint32_t samplesASecond = ReadLittleEndian(file, format.data + 4, 4);
    if (samplesASecond == 0 || samplesASecond > std::numeric_limits<int>::max())
        return Corrupt();
    rate = static_cast<int>(samplesASecond);
    return {};
}

// A rate may be so far off that the sound cannot be brought to the rate of all sounds.
CStatus CheckData(Bytes file, const CChunk& data, int rate) {
    if (data.size == 0)
        return CStatus::Failure("Empty audio file!");
    if (!data.IsWhole(file))
        return Corrupt();
    const std::uint64_t converted = ConvertedCount(rate, data.size);
    if (converted == 0)
        return CStatus::Failure("Empty audio file!");
    return converted > std::numeric_limits<std::int32_t>::max() ? Corrupt() : CStatus();
}

CStatus ParseWave(Bytes file, CWaveSound& sound) {
    const std::optional<CChunk> wave = FindChunk(file, 0, file.size(), "RIFF", "WAVE");
    if (!wave)
        return CStatus::Failure("Incorrect audio file format!");
    const std::uint64_t end = wave->data + wave->size;
    const std::optional<CChunk> format = FindChunk(file, wave->data + 4, end, "fmt ");
    if (!format)
        return Corrupt();
    int rate = 0;
    if (CStatus status = CheckFormat(file, *format, rate); !status)
        return status;
    const std::optional<CChunk> data = FindChunk(file, format->Next(), end, "data");
    if (!data)
        return Corrupt();
    if (CStatus status = CheckData(file, *data, rate); !status)
        return status;
    const Bytes samples = file.subspan(static_cast<std::size_t>(data->data), static_cast<std::size_t>(data->size));
    sound = {rate, {samples.begin(), samples.end()}};
    return {};
}

} // namespace

CStatus DecodeWave(Bytes file, CWaveSound& sound) {
    try {
        return ParseWave(file, sound);
    } catch (const std::bad_alloc&) {
        return Corrupt();
    }
}

CStatus ReadWaveFile(const Path& path, CWaveSound& sound) {
    const std::string name = Utf8Of(path);
    if (name.size() < 5 || !name.ends_with(".wav"))
        return CStatus::Failure("Invalid Audio File extension");
    const std::optional<CFileBytes> file = ReadWholeFile(path);
    if (!file)
        return CStatus::Failure("Could not open audio file!");
    return DecodeWave(file->Span(), sound);
}

} // namespace velmor
