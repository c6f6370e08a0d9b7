#include "sound/OriginalSound.h"

#include "platform/files/AtomicFile.h"
#include "platform/files/ContentHash.h"

#include <algorithm>
#include <fstream>
#include <string_view>
#include <vector>

namespace velmor {

namespace {

// The head: 16 characters that say what it is and its version, the hash (least significant byte first), the
// extension, filled up with zeros.
constexpr std::string_view signature = "VELMORORIGSOUND1";
constexpr std::size_t hashAt = 16;
constexpr std::size_t extensionAt = 24;
constexpr std::size_t extensionBytes = 8;

bool AppendFile(CAtomicFile& file, const Path& source) {
    std::ifstream input(source, std::ios::binary);
    std::vector<char> part(1 << 18);
    while (input) {
        input.read(part.data(), static_cast<std::streamsize>(part.size()));
        const auto got = static_cast<std::size_t>(input.gcount());
        if (!file.Append({reinterpret_cast<const std::uint8_t*>(part.data()), got}))
            return false;
    }
    return input.eof();
}

bool AppendSound(CAtomicFile& file, const COriginalSource& source) {
    return source.form.isMovie ? CopyMovieSound(source.file, file) == MovieError::None
                               : AppendFile(file, source.file);
}

CStatus NotKept(const char* why) {
    return CStatus::Failure("The original of the sound could not be kept beside it: " + std::string(why) +
                            "\nIt is played and rendered as it was converted.");
}

} // namespace

std::array<std::uint8_t, COriginalHead::size> WriteOriginalHead(const COriginalHead& head) {
    std::array<std::uint8_t, COriginalHead::size> bytes{};
    std::ranges::copy(signature, bytes.begin());
    for (std::size_t i = 0; i < 8; ++i)
        bytes[hashAt + i] = static_cast<std::uint8_t>(head.soundHash >> 8 * i);
    std::copy_n(head.extension.begin(), std::min(head.extension.size(), extensionBytes),
                bytes.begin() + extensionAt);
    return bytes;
}

std::optional<COriginalHead> ReadOriginalHead(std::span<const std::uint8_t> bytes) {
    if (bytes.size() < COriginalHead::size ||
        !std::equal(signature.begin(), signature.end(), bytes.begin(),
                    [](char a, std::uint8_t b) { return static_cast<std::uint8_t>(a) == b; }))
        return std::nullopt;
    COriginalHead head;
    for (std::size_t i = 0; i < 8; ++i)
        head.soundHash |= std::uint64_t{bytes[hashAt + i]} << 8 * i;
    const auto extension = bytes.subspan(extensionAt, extensionBytes);
    head.extension.assign(extension.begin(), std::ranges::find(extension, 0));
    return head;
}

CStatus WriteOriginal(const Path& file, const COriginalSource& source, std::span<const std::uint8_t> samples) {
    const std::optional<CFileIdentity> identity = IdentifyFile(source.file);
    if (identity && !source.form.isMovie && identity->size > mostOriginalBytes)
        return NotKept("it is too large.");
    std::optional<CAtomicFile> kept = CAtomicFile::Create(file);
    if (!kept || !kept->Append(WriteOriginalHead({ContentHash(samples), source.form.extension})) ||
        !AppendSound(*kept, source))
        return NotKept("disk full or write protected?");
    if (kept->Size() > mostOriginalBytes + COriginalHead::size)
        return NotKept("it is too large.");
    return kept->Commit() ? CStatus() : NotKept("disk full or write protected?");
}

bool OpenOriginal(const Path& file, std::span<const std::uint8_t> samples, CSoundReader& reader) {
    std::array<std::uint8_t, COriginalHead::size> bytes{};
    std::ifstream input(file, std::ios::binary);
    input.read(reinterpret_cast<char*>(bytes.data()), bytes.size());
    const std::optional<COriginalHead> head = input ? ReadOriginalHead(bytes) : std::nullopt;
    return head && head->soundHash == ContentHash(samples) &&
           reader.Open(file, COriginalHead::size) == MovieError::None;
}

} // namespace velmor
