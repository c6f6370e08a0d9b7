#include "image/CelFileFormat.h"

#include "image/RunLength.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <string_view>

namespace velmor {

namespace {

constexpr std::string_view celSignature = "VELMORBITFILE1.0";
constexpr std::string_view pictureSignature = "VELMORPICFILE1.0";
constexpr std::size_t signatureSize = 16;
constexpr int smallestSide = 2;

using Bytes = std::span<const std::uint8_t>;

LoadState KindOf(Bytes file) {
    if (file.size() < signatureSize)
        return LoadState::Nothing;
    const auto starts = [file](std::string_view signature) {
        return std::memcmp(file.data(), signature.data(), signatureSize) == 0;
    };
    return starts(celSignature)       ? LoadState::Cel
           : starts(pictureSignature) ? LoadState::Picture
                                      : LoadState::Nothing;
}

std::size_t ReadUpTo(std::istream& file, std::span<std::uint8_t> bytes) {
    file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return static_cast<std::size_t>(file.gcount());
}

std::size_t BytesLeft(std::istream& file) {
    const std::istream::pos_type here = file.tellg();
    const std::istream::pos_type end = file.seekg(0, std::ios::end).tellg();
    file.seekg(here);
    return file ? static_cast<std::size_t>(end - here) : 0;
}

} // namespace

// Nothing is buffered: what is read goes straight to where it is wanted, which for planes is most of the time that
// a load takes.
bool OpenCelFile(const Path& path, std::ifstream& file) {
    file.rdbuf()->pubsetbuf(nullptr, 0);
    if (FileExists(path))
        file.open(path, std::ios::binary);
    return file.is_open();
}

bool ReadAll(std::istream& file, std::span<std::uint8_t> bytes) {
    return ReadUpTo(file, bytes) == bytes.size();
}

CStatus TruncatedFile(LoadState kind) {
    return CStatus::Failure(kind == LoadState::Cel ? "Unable to read cel file :: Truncated cel file"
                                                   : "Unable to read picture file :: Truncated picture file");
}

CStatus ReadCelFileSizes(std::istream& file, CCelFileHeader& header, bool* isCut) {
    std::array<std::uint8_t, celFileHeaderSize> bytes{};
    const Bytes present = Bytes(bytes).first(ReadUpTo(file, bytes));
    header.kind = KindOf(present);
    if (header.kind == LoadState::Nothing)
        return CStatus::Failure("Invalid file format!");
    if (isCut)
        *isCut = present.size() < celFileHeaderSize;
    if (present.size() < celFileHeaderSize)
        return TruncatedFile(header.kind);
    header.size = {bytes[16] * 256 + bytes[17], bytes[18] * 256 + bytes[19]};
    if (header.size.width < smallestSide || header.size.height < smallestSide)
        return CStatus::Failure("Invalid cel dimensions ::  corrupted cel file");
    return {};
}

CStatus ReadUpToPlanes(std::istream& file, CCelFileHeader& header) {
    std::size_t least = header.MaskBytes() + header.channels * LeastRunBytes(header.Pixels());
    if (header.kind == LoadState::Picture) {
        std::uint8_t channels = 0;
        if (!ReadAll(file, {&channels, 1}))
            return TruncatedFile(header.kind);
        if (channels != 3 && channels != 4)
            return CStatus::Failure("Unable to read picture file :: Invalid picture file");
        header.channels = channels;
        least = channels * header.Pixels();
    }
    header.bytesBehind = BytesLeft(file);
    return header.bytesBehind < least ? TruncatedFile(header.kind) : CStatus();
}

std::array<std::uint8_t, celFileHeaderSize> MakeCelFileHeader(LoadState kind, int width, int height) {
    std::array<std::uint8_t, celFileHeaderSize> header{};
    std::ranges::copy(kind == LoadState::Cel ? celSignature : pictureSignature, header.begin());
    header[16] = static_cast<std::uint8_t>(width / 256 & 0xff);
    header[17] = static_cast<std::uint8_t>(width % 256);
    header[18] = static_cast<std::uint8_t>(height / 256 & 0xff);
    header[19] = static_cast<std::uint8_t>(height % 256);
    return header;
}

} // namespace velmor
