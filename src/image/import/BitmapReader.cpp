#include "image/import/DibDecoder.h"
#include "image/import/ImageReaders.h"

#include <algorithm>
#include <optional>

namespace velmor {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::size_t fileHeaderSize = 14;
constexpr std::size_t bitsOffsetAt = 10;

CStatus StatusOf(DibResult result, const std::string& name) {
    switch (result) {
    case DibResult::Done:
        return {};
    case DibResult::Truncated:
        return CStatus::Failure("Unexpected end of file: " + name);
    case DibResult::InvalidSize:
        return CStatus::Failure("Invalid image dimensions in: " + name);
    case DibResult::Unsupported:
        break;
    }
    return CStatus::Failure("Could not create a bitmap from file");
}

DibResult OpenFile(Bytes file, CDibDecoder& decoder) {
    if (file.size() < fileHeaderSize)
        return DibResult::Truncated;
    if (file[0] != 'B' || file[1] != 'M')
        return DibResult::Unsupported;
    std::size_t bitsAt = 0;
    for (std::size_t i = 0; i < 4; ++i)
        bitsAt |= static_cast<std::size_t>(file[bitsOffsetAt + i]) << 8 * i;
    const DibResult opened =
        CDibDecoder::Open(file.subspan(fileHeaderSize), file.subspan(std::min(bitsAt, file.size())), decoder);
    const auto [width, height] = decoder.Size();
    // Not known (0) when the header could not be read.
    return width == 1 || height == 1 ? DibResult::InvalidSize : opened;
}

CStatus ReadBitmap(CCelImg& image, const Path& path, ImportKind kind, int threshold, const std::string& name) {
    const Path source = path; // it may be the image's own path, which Clear() empties
    image.Clear();
    const std::optional<CFileBytes> file = ReadWholeFile(source);
    if (!file)
        return CStatus::Failure("Unable to open file" + name);
    CDibDecoder decoder;
    if (CStatus opened = StatusOf(OpenFile(file->Span(), decoder), name); !opened)
        return opened;
    return ImportRows(image, decoder, kind, threshold, source, StatusOf(DibResult::Truncated, name).Message());
}

} // namespace

CStatus ReadBitmapPicture(CCelImg& image, const Path& path, const std::string& name) {
    return ReadBitmap(image, path, ImportKind::Picture, 0, name);
}

CStatus ReadBitmapCel(CCelImg& image, const Path& path, int threshold, const std::string& name) {
    return ReadBitmap(image, path, ImportKind::Cel, threshold, name);
}

} // namespace velmor
