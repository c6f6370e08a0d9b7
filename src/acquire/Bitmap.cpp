#include "acquire/Bitmap.h"

#include "platform/files/Archive.h"

#include <algorithm>

namespace velmor {

namespace {

constexpr int infoHeaderBytes = 40;
constexpr int fileHeaderBytes = 14;
constexpr std::size_t bitCountOffset = 14; // in the information header
constexpr std::size_t colorsUsedOffset = 32;
constexpr std::size_t mostHeaderBytes = 124; // of the header's fifth version
constexpr std::size_t largestSide = 15000;

std::size_t PaddedRow(std::size_t bits) {
    return (bits + 31) / 32 * 4;
}

// BITMAPINFOHEADER, as Microsoft publishes it under "Bitmap Storage".
void WriteInfoHeader(CArchiveWriter& archive, int width, int height, int bitsPerPixel, std::size_t imageBytes) {
    archive.WriteInt(infoHeaderBytes);
    archive.WriteInt(width);
    archive.WriteInt(height);
    archive.WriteInt(1 | bitsPerPixel << 16); // planes, bits a pixel
    archive.WriteInt(0);                      // no compression
    archive.WriteInt(static_cast<int>(imageBytes));
    for (int rest = 0; rest < 4; ++rest)
        archive.WriteInt(0);
}

// Rows the other way up, each padded.
void AppendRows(PackedBitmap& bitmap, std::span<const std::uint8_t> rows, std::size_t rowBytes,
                std::size_t paddedBytes) {
    for (std::size_t row = rows.size() / rowBytes; row-- > 0;) {
        const auto source = rows.subspan(row * rowBytes, rowBytes);
        bitmap.insert(bitmap.end(), source.begin(), source.end());
        bitmap.resize(bitmap.size() + paddedBytes - rowBytes);
    }
}

bool Fits(int width, int height, std::size_t rowBytes, std::size_t bytes) {
    return width > 0 && height > 0 && static_cast<std::size_t>(width) <= largestSide &&
           static_cast<std::size_t>(height) <= largestSide && bytes == rowBytes * static_cast<std::size_t>(height);
}

} // namespace

PackedBitmap PackTrueColor(int width, int height, std::span<const std::uint8_t> rows) {
    const std::size_t rowBytes = static_cast<std::size_t>(std::max(width, 0)) * 3;
    if (!Fits(width, height, rowBytes, rows.size()))
        return {};
    const std::size_t padded = PaddedRow(rowBytes * 8);
    CArchiveWriter archive;
    WriteInfoHeader(archive, width, height, 24, padded * static_cast<std::size_t>(height));
    PackedBitmap bitmap(archive.Bytes().begin(), archive.Bytes().end());
    AppendRows(bitmap, rows, rowBytes, padded);
    return bitmap;
}

PackedBitmap PackLineArt(int width, int height, std::span<const std::uint8_t> rows) {
    const std::size_t rowBytes = (static_cast<std::size_t>(std::max(width, 0)) + 7) / 8;
    if (!Fits(width, height, rowBytes, rows.size()))
        return {};
    const std::size_t padded = PaddedRow(static_cast<std::size_t>(width));
    CArchiveWriter archive;
    WriteInfoHeader(archive, width, height, 1, padded * static_cast<std::size_t>(height));
    archive.WriteInt(0x00ffffff); // a clear bit is white paper
    archive.WriteInt(0);
    PackedBitmap bitmap(archive.Bytes().begin(), archive.Bytes().end());
    AppendRows(bitmap, rows, rowBytes, padded);
    return bitmap;
}

std::size_t PackedBytes(const std::uint8_t* packed) {
    const auto number = [packed](std::size_t offset, std::size_t bytes) {
        std::uint32_t value = 0;
        for (std::size_t i = bytes; i-- > 0;)
            value = value << 8 | packed[offset + i];
        return static_cast<std::size_t>(value);
    };
    const std::size_t header = number(0, 4);
    const std::size_t width = number(4, 4);
    const std::size_t height = number(8, 4);
    const std::size_t bits = number(bitCountOffset, 2);
    if (header < infoHeaderBytes || header > mostHeaderBytes || width > largestSide || height > largestSide ||
        bits > 32)
        return 0;
    const std::size_t used = number(colorsUsedOffset, 4);
    const std::size_t fullTable = bits <= 8 ? std::size_t{1} << bits : 0;
    const std::size_t colors = used == 0 || used > fullTable ? fullTable : used;
    return header + colors * 4 + PaddedRow(width * bits) * height;
}

std::vector<std::uint8_t> BitmapFileOf(std::span<const std::uint8_t> packed) {
    if (packed.size() < infoHeaderBytes)
        return {};
    const int bitsPerPixel = packed[bitCountOffset] | packed[bitCountOffset + 1] << 8;
    const int colors = bitsPerPixel <= 8 ? 1 << bitsPerPixel : 0;
    CArchiveWriter archive;
    archive.WriteByte('B');
    archive.WriteByte('M');
    archive.WriteInt(static_cast<int>(packed.size()) + fileHeaderBytes);
    archive.WriteInt(0);
    archive.WriteInt(fileHeaderBytes + infoHeaderBytes + colors * 4);
    std::vector<std::uint8_t> file(archive.Bytes().begin(), archive.Bytes().end());
    file.insert(file.end(), packed.begin(), packed.end());
    return file;
}

} // namespace velmor
