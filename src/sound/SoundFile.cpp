#include "sound/SoundFile.h"

#include "platform/files/AtomicFile.h"

#include <algorithm>
#include <array>
#include <limits>
#include <new>

namespace velmor {

namespace {

// The file: sample count (signed 32-bit, little-endian), then the samples.
constexpr std::size_t countBytes = 4;
constexpr std::uint64_t mostSamples = std::numeric_limits<std::int32_t>::max();

double FactorOf(int rate) {
    return static_cast<double>(samplesPerSecond) / rate;
}

// Fills `converted` with the samples from number `first` on of the whole converted sound.
void ConvertPart(int rate, std::span<const std::uint8_t> samples, std::uint64_t first,
                 std::span<std::uint8_t> converted) {
    const double factor = FactorOf(rate);
    const std::uint64_t last = samples.size() - 1;
    for (std::size_t i = 0; i < converted.size(); ++i) {
        const auto source = static_cast<std::uint64_t>(static_cast<double>(first + i) / factor);
        converted[i] = samples[static_cast<std::size_t>(std::min(source, last))];
    }
}

std::array<std::uint8_t, countBytes> BytesOfCount(std::uint64_t count) {
    std::array<std::uint8_t, countBytes> bytes{};
    for (std::size_t i = 0; i < countBytes; ++i)
        bytes[i] = static_cast<std::uint8_t>(count >> 8 * i);
    return bytes;
}

std::uint64_t CountInHeader(std::span<const std::uint8_t> bytes) {
    std::uint64_t count = 0;
    for (std::size_t i = 0; i < countBytes; ++i)
        count |= static_cast<std::uint64_t>(bytes[i]) << 8 * i;
    return count;
}

// Converts in small parts, so that a sound of a very low rate takes disk space but no memory.
bool AppendConverted(CAtomicFile& file, int rate, std::span<const std::uint8_t> samples, std::uint64_t count) {
    std::array<std::uint8_t, 16384> part{};
    for (std::uint64_t first = 0; first < count; first += part.size()) {
        const auto length = static_cast<std::size_t>(std::min<std::uint64_t>(part.size(), count - first));
        ConvertPart(rate, samples, first, std::span(part).first(length));
        if (!file.Append(std::span(part).first(length)))
            return false;
    }
    return true;
}

bool AppendSamples(CAtomicFile& file, int rate, std::span<const std::uint8_t> samples, std::uint64_t count) {
    if (count > mostSamples || !file.Append(BytesOfCount(count)))
        return false;
    return rate == samplesPerSecond ? file.Append(samples) : AppendConverted(file, rate, samples, count);
}

CStatus Corrupt() {
    return CStatus::Failure("Corrupt audio file !");
}

} // namespace

std::uint64_t ConvertedCount(int rate, std::uint64_t count) {
    return rate == samplesPerSecond ? count
                                    : static_cast<std::uint64_t>(static_cast<double>(count) * FactorOf(rate));
}

std::vector<std::uint8_t> ConvertToSoundRate(int rate, std::span<const std::uint8_t> samples) {
    std::vector<std::uint8_t> converted(static_cast<std::size_t>(ConvertedCount(rate, samples.size())));
    ConvertPart(rate, samples, 0, converted);
    return converted;
}

CSoundWriteResult WriteSound(const Path& path, int rate, std::span<const std::uint8_t> samples) {
    if (rate < 1)
        return {false, "Corrupt audio file!"};
    const std::uint64_t count = ConvertedCount(rate, samples.size());
    if (count == 0)
        return {false, "Empty audio file!"};
    std::optional<CAtomicFile> file = CAtomicFile::Create(path);
    if (!file)
        return {false, "Unable to open audio file for writing ! Disk Full ??"};
    if (!AppendSamples(*file, rate, samples, count) || !file->Commit())
        return {true, "Unable to write audio file!, Disk Full??"};
    return {};
}

CStatus LoadSoundFile(const Path& path, const std::string& name, std::vector<std::uint8_t>& samples) {
    samples.clear();
    const std::optional<CFileBytes> file = ReadWholeFile(path);
    if (!file)
        return CStatus::Failure("Internal Error : Could not find sound " + name + " at CVelmorltDoc::LoadSound");
    if (file->Size() < countBytes)
        return Corrupt();
    const std::uint64_t count = CountInHeader(file->Span());
    if (count == 0 || count > mostSamples || count > file->Size() - countBytes)
        return Corrupt();
    try {
        const auto data = file->Span().subspan(countBytes, static_cast<std::size_t>(count));
        samples.assign(data.begin(), data.end());
    } catch (const std::bad_alloc&) {
        return Corrupt();
    }
    return {};
}

} // namespace velmor
