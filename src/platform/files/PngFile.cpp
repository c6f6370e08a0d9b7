#include "platform/files/PngFile.h"

#include "platform/files/AtomicFile.h"
#include "platform/files/PngDeflate.h"

#include <algorithm>
#include <array>
#include <exception>
#include <libdeflate.h>
#include <string_view>

namespace velmor {

namespace {

constexpr std::array<std::uint8_t, 8> signature = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
constexpr int mostPixels = 1000000;                            // to a side, of common readers
constexpr std::size_t mostBytesInChunk = std::size_t{1} << 30; // a chunk's length has 31 bits

std::array<std::uint8_t, 4> Number(std::size_t number) {
    const auto byte = [number](int shift) { return static_cast<std::uint8_t>(number >> shift); };
    return {byte(24), byte(16), byte(8), byte(0)};
}

bool AppendChunk(CAtomicFile& file, std::string_view type, std::span<const std::uint8_t> data) {
    const std::uint32_t typeSum = libdeflate_crc32(0, type.data(), type.size());
    // The library takes bytes at no address for the beginning of a sum.
    const std::uint32_t sum = data.empty() ? typeSum : libdeflate_crc32(typeSum, data.data(), data.size());
    const std::span<const std::uint8_t> typeBytes(reinterpret_cast<const std::uint8_t*>(type.data()), type.size());
    return file.Append(Number(data.size())) && file.Append(typeBytes) && file.Append(data) &&
           file.Append(Number(sum));
}

bool AppendHeader(CAtomicFile& file, const CPngRows& rows) {
    const std::uint8_t colorType = rows.channels == 4 ? 6 : 2;
    std::array<std::uint8_t, 13> header = {0, 0, 0, 0, 0,
                                           0, 0, 0, 8, colorType}; // 8 bits a channel, not interlaced
    std::ranges::copy(Number(static_cast<std::size_t>(rows.width)), header.begin());
    std::ranges::copy(Number(static_cast<std::size_t>(rows.height)), header.begin() + 4);
    return file.Append(signature) && AppendChunk(file, "IHDR", header);
}

bool AppendStream(CAtomicFile& file, std::span<const std::uint8_t> stream) {
    for (; !stream.empty(); stream = stream.subspan(std::min(mostBytesInChunk, stream.size())))
        if (!AppendChunk(file, "IDAT", stream.first(std::min(mostBytesInChunk, stream.size()))))
            return false;
    return true;
}

bool CanBe(const CPngRows& rows) {
    return rows.width > 0 && rows.height > 0 && (rows.channels == 3 || rows.channels == 4) &&
           rows.width <= mostPixels && rows.height <= mostPixels;
}

bool IsWhole(const CPngPixels& pixels) {
    if (pixels.width <= 0 || pixels.height <= 0 || pixels.channels <= 0)
        return false;
    const std::uint64_t needed =
        std::uint64_t{static_cast<std::uint32_t>(pixels.width)} * static_cast<std::uint32_t>(pixels.height);
    return pixels.bytes.size() % static_cast<std::size_t>(pixels.channels) == 0 &&
           pixels.bytes.size() / static_cast<std::size_t>(pixels.channels) == needed;
}

} // namespace

bool WritePng(const Path& path, const CPngRows& rows, PngCompression compression) {
    try {
        if (!CanBe(rows))
            return false;
        const CPngStream stream = Deflate(CFilteredRows(rows), compression);
        std::optional<CAtomicFile> file = CAtomicFile::Create(path);
        return file && AppendHeader(*file, rows) && AppendStream(*file, stream.Bytes()) &&
               AppendChunk(*file, "IEND", {}) && file->Commit();
    } catch (const std::exception&) {
        return false; // without memory
    }
}

bool WritePng(const Path& path, const CPngPixels& pixels, PngCompression compression) {
    if (!IsWhole(pixels))
        return false;
    const std::size_t rowBytes = static_cast<std::size_t>(pixels.width) * static_cast<std::size_t>(pixels.channels);
    const auto fill = [&](int y, std::uint8_t* row) {
        std::ranges::copy(pixels.bytes.subspan(static_cast<std::size_t>(y) * rowBytes, rowBytes), row);
    };
    return WritePng(path, {pixels.width, pixels.height, pixels.channels, fill}, compression);
}

} // namespace velmor
