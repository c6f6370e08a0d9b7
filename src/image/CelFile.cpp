#include "image/CelImg.h"
#include "image/RunLength.h"
#include "platform/files/AtomicFile.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>

namespace velmor {

namespace {

constexpr std::string_view celSignature = "VELMORBITFILE1.0";
constexpr std::string_view pictureSignature = "VELMORPICFILE1.0";
constexpr std::size_t signatureSize = 16;
constexpr std::size_t headerSize = signatureSize + 4;
constexpr int smallestSide = 2;
/// Pictures whose alpha is nowhere below this are written without it.
constexpr std::uint8_t leastOpaqueAlpha = 253;
constexpr std::array allChannels{Channel::Red, Channel::Green, Channel::Blue, Channel::Alpha};

using Bytes = std::span<const std::uint8_t>;

struct CHeader {
    LoadState kind = LoadState::Nothing;
    CSize size;
};

CStatus TruncatedCel() {
    return CStatus::Failure("Unable to read cel file :: Truncated cel file");
}

CStatus TruncatedPicture() {
    return CStatus::Failure("Unable to read picture file :: Truncated picture file");
}

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

CStatus ReadHeader(Bytes file, CHeader& header) {
    header.kind = KindOf(file);
    if (header.kind == LoadState::Nothing)
        return CStatus::Failure("Invalid file format!");
    if (file.size() < headerSize)
        return header.kind == LoadState::Cel ? TruncatedCel() : TruncatedPicture();
    header.size = {file[16] * 256 + file[17], file[18] * 256 + file[19]};
    if (header.size.width < smallestSide || header.size.height < smallestSide)
        return CStatus::Failure("Invalid cel dimensions ::  corrupted cel file");
    return {};
}

// Nothing is buffered: what is read goes straight to where it is wanted, which for planes is most of the time that
// a load takes.
bool Open(const Path& path, std::ifstream& file) {
    file.rdbuf()->pubsetbuf(nullptr, 0);
    if (FileExists(path))
        file.open(path, std::ios::binary);
    return file.is_open();
}

std::size_t ReadUpTo(std::istream& file, std::span<std::uint8_t> bytes) {
    file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return static_cast<std::size_t>(file.gcount());
}

bool ReadAll(std::istream& file, std::span<std::uint8_t> bytes) {
    return ReadUpTo(file, bytes) == bytes.size();
}

std::size_t BytesLeft(std::istream& file) {
    const std::istream::pos_type here = file.tellg();
    const std::istream::pos_type end = file.seekg(0, std::ios::end).tellg();
    file.seekg(here);
    return file ? static_cast<std::size_t>(end - here) : 0;
}

std::size_t PixelsOf(const CSize& size) {
    return static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
}

// The sizes are two bytes each: of larger ones the low 16 bits are written.
std::array<std::uint8_t, headerSize> MakeHeader(std::string_view signature, int width, int height) {
    std::array<std::uint8_t, headerSize> header{};
    std::copy(signature.begin(), signature.end(), header.begin());
    header[16] = static_cast<std::uint8_t>(width / 256 & 0xff);
    header[17] = static_cast<std::uint8_t>(width % 256);
    header[18] = static_cast<std::uint8_t>(height / 256 & 0xff);
    header[19] = static_cast<std::uint8_t>(height % 256);
    return header;
}

std::uint8_t LeastOf(Bytes alpha) {
    std::uint8_t least = 255;
    for (const std::uint8_t value : alpha)
        least = std::min(least, value);
    return least;
}

// What takes the bytes of a file: one on the disk, or memory.
struct CByteSink {
    std::vector<std::uint8_t> bytes;

    bool Append(Bytes more) {
        bytes.insert(bytes.end(), more.begin(), more.end());
        return true;
    }
};

template<class File>
bool AppendCel(File& file, const CCelImg& cel) {
    if (!file.Append(MakeHeader(celSignature, cel.Width(), cel.Height())) || !file.Append(cel.LineMask()))
        return false;
    std::vector<CRun> runs;
    for (const Channel channel : allChannels) {
        runs.clear();
        EncodeRuns(cel.PlaneOf(channel), runs);
        if (!file.Append({reinterpret_cast<const std::uint8_t*>(runs.data()), runs.size() * sizeof(CRun)}))
            return false;
    }
    return true;
}

template<class File>
bool AppendPicture(File& file, const CCelImg& picture) {
    const int channelCount = LeastOf(picture.PlaneOf(Channel::Alpha)) >= leastOpaqueAlpha ? 3 : 4;
    const std::uint8_t countByte = static_cast<std::uint8_t>(channelCount);
    if (!file.Append(MakeHeader(pictureSignature, picture.Width(), picture.Height())) ||
        !file.Append({&countByte, 1}))
        return false;
    return std::all_of(allChannels.begin(), allChannels.begin() + channelCount,
                       [&](Channel channel) { return file.Append(picture.PlaneOf(channel)); });
}

template<class Append>
CStatus WriteImage(const CCelImg& image, Append append) {
    try {
        std::optional<CAtomicFile> file = CAtomicFile::Create(image.FilePath());
        if (!file)
            return CStatus::Failure("Problem opening file for writing");
        if (append(*file, image) && file->Commit())
            return {};
    } catch (const std::exception&) {
        // No memory for the coded planes: reported like any other write that does not succeed.
    }
    return CStatus::Failure("Problem writing file: Disk Full? or ReadOnly?");
}

} // namespace

CStatus CCelImg::Save() {
    switch (GetLoadState()) {
    case LoadState::Nothing:
        return CStatus::Failure("Internal Error : nothing loaded in Save");
    case LoadState::Picture:
        return SavePicture();
    case LoadState::Cel:
        return SaveCel();
    }
    return CStatus::Failure("Internal Error : invalid load state in save");
}

CStatus CCelImg::SaveCel() {
    if (GetLoadState() != LoadState::Cel)
        return CStatus::Failure("Internal Error : no cel image loaded in SaveCel");
    CStatus written = WriteImage(*this, AppendCel<CAtomicFile>);
    if (written)
        m_modified = false;
    return written;
}

CStatus CCelImg::SavePicture() {
    if (GetLoadState() != LoadState::Picture)
        return CStatus::Failure("Internal Error : no picture image loaded in SavePicture");
    CStatus written = WriteImage(*this, AppendPicture<CAtomicFile>);
    if (written)
        m_modified = false;
    return written;
}

bool CCelImg::IsAlphaLostInFile() const {
    if (GetLoadState() != LoadState::Picture)
        return false;
    const std::uint8_t least = LeastOf(PlaneOf(Channel::Alpha));
    return least >= leastOpaqueAlpha && least < 255;
}

std::vector<std::uint8_t> CCelImg::FileBytes() const {
    CByteSink sink;
    if (GetLoadState() == LoadState::Cel)
        AppendCel(sink, *this);
    else if (GetLoadState() == LoadState::Picture)
        AppendPicture(sink, *this);
    return std::move(sink.bytes);
}

CStatus CCelImg::LoadCel(std::istream& file, const CSize& size, const Path& path) {
    const auto maskSize =
        static_cast<std::size_t>(size.height) * static_cast<std::size_t>(StrideBitsOf(size.width) / 8);
    const std::size_t left = BytesLeft(file);
    if (left < maskSize + allChannels.size() * LeastRunBytes(PixelsOf(size)))
        return TruncatedCel();
    if (CStatus allocated = Allocate(size.width, size.height, LoadState::Cel, path); !allocated)
        return allocated;
    CFileBytes coded(left - maskSize);
    if (!ReadAll(file, LineMask()) || !ReadAll(file, coded.Span()))
        return TruncatedCel();
    Bytes runs = coded.Span();
    for (const Channel channel : allChannels)
        if (!DecodeRuns(runs, PlaneOf(channel)))
            return TruncatedCel();
    return {};
}

CStatus CCelImg::LoadPicture(std::istream& file, const CSize& size, const Path& path) {
    std::uint8_t channelCount = 0;
    if (!ReadAll(file, {&channelCount, 1}))
        return TruncatedPicture();
    if (channelCount != 3 && channelCount != 4)
        return CStatus::Failure("Unable to read picture file :: Invalid picture file");
    if (BytesLeft(file) < channelCount * PixelsOf(size))
        return TruncatedPicture();
    if (CStatus allocated = Allocate(size.width, size.height, LoadState::Picture, path); !allocated)
        return allocated;
    for (std::size_t i = 0; i < channelCount; ++i)
        if (!ReadAll(file, PlaneOf(allChannels[i])))
            return TruncatedPicture();
    if (channelCount == 3)
        std::ranges::fill(PlaneOf(Channel::Alpha), std::uint8_t{255});
    return {};
}

CStatus CCelImg::Load(const Path& path) {
    const Path source = path; // it may be this image's own path, which Clear() empties
    Clear();
    std::ifstream file;
    if (!Open(source, file))
        return CStatus::Failure("Unable to open cel file for reading");
    return LoadFrom(file, source);
}

CStatus CCelImg::LoadBytes(std::span<const std::uint8_t> bytes, const Path& path) {
    const Path source = path;
    Clear();
    std::istringstream file(std::string(bytes.begin(), bytes.end()));
    return LoadFrom(file, source);
}

CStatus CCelImg::LoadFrom(std::istream& file, const Path& source) {
    std::array<std::uint8_t, headerSize> bytes{};
    CHeader header;
    if (CStatus read = ReadHeader(Bytes(bytes).first(ReadUpTo(file, bytes)), header); !read)
        return read;
    CStatus loaded;
    try {
        loaded = header.kind == LoadState::Cel ? LoadCel(file, header.size, source)
                                               : LoadPicture(file, header.size, source);
    } catch (const std::exception&) {
        loaded = CStatus::Failure("Unable to allocate memory for cel!");
    }
    if (!loaded)
        *this = CCelImg{};
    return loaded;
}

CStatus CCelImg::GetDimensions(const Path& path, CSize& size) {
    const std::string suffix = ", in GetDimensions";
    std::ifstream file;
    if (!Open(path, file))
        return CStatus::Failure("Unable to open cel file for reading" + suffix);
    std::array<std::uint8_t, headerSize> bytes{};
    const Bytes present = Bytes(bytes).first(ReadUpTo(file, bytes));
    if (KindOf(present) != LoadState::Nothing && present.size() < headerSize)
        return CStatus::Failure(TruncatedCel().Message() + suffix); // the one text for both formats
    CHeader header;
    if (const CStatus read = ReadHeader(present, header); !read)
        return CStatus::Failure(read.Message() + suffix);
    size = header.size;
    return {};
}

} // namespace velmor
