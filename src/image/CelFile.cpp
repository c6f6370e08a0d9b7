#include "image/CelFileFormat.h"
#include "image/CelImg.h"
#include "image/RunLength.h"
#include "platform/files/AtomicFile.h"

#include <algorithm>
#include <exception>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>

namespace velmor {

namespace {

/// Pictures whose alpha is nowhere below this are written without it.
constexpr std::uint8_t leastOpaqueAlpha = 253;

using Bytes = std::span<const std::uint8_t>;

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
    if (!file.Append(MakeCelFileHeader(LoadState::Cel, cel.Width(), cel.Height())) || !file.Append(cel.LineMask()))
        return false;
    std::vector<CRun> runs;
    for (const Channel channel : fileChannels) {
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
    if (!file.Append(MakeCelFileHeader(LoadState::Picture, picture.Width(), picture.Height())) ||
        !file.Append({&countByte, 1}))
        return false;
    return std::all_of(fileChannels.begin(), fileChannels.begin() + channelCount,
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
    CCelFileHeader header{LoadState::Cel, size};
    if (CStatus read = ReadUpToPlanes(file, header); !read)
        return read;
    if (CStatus allocated = Allocate(size.width, size.height, header.kind, path); !allocated)
        return allocated;
    CFileBytes coded(header.bytesBehind - m_lineMask.Size());
    if (!ReadAll(file, LineMask()) || !ReadAll(file, coded.Span()))
        return TruncatedFile(header.kind);
    Bytes runs = coded.Span();
    for (const Channel channel : fileChannels)
        if (!DecodeRuns(runs, PlaneOf(channel)))
            return TruncatedFile(header.kind);
    return {};
}

CStatus CCelImg::LoadPicture(std::istream& file, const CSize& size, const Path& path) {
    CCelFileHeader header{LoadState::Picture, size};
    if (CStatus read = ReadUpToPlanes(file, header); !read)
        return read;
    if (CStatus allocated = Allocate(size.width, size.height, header.kind, path); !allocated)
        return allocated;
    for (std::size_t i = 0; i < header.channels; ++i)
        if (!ReadAll(file, PlaneOf(fileChannels[i])))
            return TruncatedFile(header.kind);
    if (header.channels == 3)
        std::ranges::fill(PlaneOf(Channel::Alpha), std::uint8_t{255});
    return {};
}

CStatus CCelImg::Load(const Path& path) {
    const Path source = path; // it may be this image's own path, which Clear() empties
    Clear();
    std::ifstream file;
    if (!OpenCelFile(source, file))
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
    CCelFileHeader header;
    if (CStatus read = ReadCelFileSizes(file, header); !read)
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
    if (!OpenCelFile(path, file))
        return CStatus::Failure("Unable to open cel file for reading" + suffix);
    CCelFileHeader header;
    bool isCut = false;
    if (const CStatus read = ReadCelFileSizes(file, header, &isCut); !read) // the one text for both formats
        return CStatus::Failure((isCut ? TruncatedFile(LoadState::Cel) : read).Message() + suffix);
    size = header.size;
    return {};
}

} // namespace velmor
