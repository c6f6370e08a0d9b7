#include "platform/files/PngFile.h"

#include "platform/files/PngFilter.h"

#include <array>
#include <exception>
#include <libdeflate.h>
#include <memory>
#include <string_view>
#include <vector>

namespace velmor {

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::array<std::uint8_t, 8> signature = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
constexpr int mostPixels = 1000000;                            // to a side, of common readers
constexpr std::size_t mostBytesInChunk = std::size_t{1} << 30; // a chunk's length has 31 bits

void AppendNumber(Bytes& bytes, std::size_t number) {
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.push_back(static_cast<std::uint8_t>(number >> shift));
}

void AppendChunk(Bytes& file, std::string_view type, std::span<const std::uint8_t> data) {
    AppendNumber(file, data.size());
    const std::size_t checked = file.size();
    file.insert(file.end(), type.begin(), type.end());
    file.insert(file.end(), data.begin(), data.end());
    AppendNumber(file, libdeflate_crc32(0, file.data() + checked, file.size() - checked));
}

/// Makes zlib streams of what is compressed.
class CDeflater {
public:
    explicit CDeflater(PngCompression compression)
        : m_compressor(libdeflate_alloc_compressor(LevelOf(compression)), libdeflate_free_compressor) {
        if (!m_compressor)
            throw std::bad_alloc();
    }

    Bytes Compress(const CFilteredRows& rows) {
        const std::span<const std::uint8_t> bytes = rows.Bytes();
        const std::size_t bound = libdeflate_zlib_compress_bound(m_compressor.get(), bytes.size());
        // Most of this memory is never touched.
        const auto room = std::make_unique_for_overwrite<std::uint8_t[]>(bound);
        const std::size_t size =
            libdeflate_zlib_compress(m_compressor.get(), bytes.data(), bytes.size(), room.get(), bound);
        return {room.get(), room.get() + size};
    }

private:
    static int LevelOf(PngCompression compression) {
        constexpr std::array<int, 3> levels = {1, 2, 10};
        return levels[static_cast<std::size_t>(compression)];
    }

    std::unique_ptr<libdeflate_compressor, decltype(&libdeflate_free_compressor)> m_compressor;
};

Bytes CompressRows(const CPngPixels& pixels, PngCompression compression) {
    CDeflater deflater(compression);
    Bytes chosen = deflater.Compress(CFilteredRows(pixels, PngFilters::Chosen));
    if (compression != PngCompression::Best)
        return chosen;
    // Flat drawings are often smaller without any filter.
    Bytes plain = deflater.Compress(CFilteredRows(pixels, PngFilters::None));
    return plain.size() < chosen.size() ? plain : chosen;
}

Bytes Encode(const CPngPixels& pixels, PngCompression compression) {
    const Bytes rows = CompressRows(pixels, compression);
    Bytes header;
    AppendNumber(header, static_cast<std::size_t>(pixels.width));
    AppendNumber(header, static_cast<std::size_t>(pixels.height));
    const std::uint8_t colorType = pixels.channels == 4 ? 6 : 2;
    header.insert(header.end(), {8, colorType, 0, 0, 0}); // 8 bits a channel, not interlaced
    Bytes file(signature.begin(), signature.end());
    AppendChunk(file, "IHDR", header);
    for (std::size_t at = 0; at < rows.size(); at += mostBytesInChunk)
        AppendChunk(file, "IDAT", std::span(rows).subspan(at, std::min(mostBytesInChunk, rows.size() - at)));
    AppendChunk(file, "IEND", {});
    return file;
}

bool IsWhole(const CPngPixels& pixels) {
    if (pixels.width <= 0 || pixels.height <= 0 || (pixels.channels != 3 && pixels.channels != 4))
        return false;
    if (pixels.width > mostPixels || pixels.height > mostPixels)
        return false;
    const std::uint64_t needed =
        std::uint64_t{static_cast<std::uint32_t>(pixels.width)} * static_cast<std::uint32_t>(pixels.height);
    return pixels.bytes.size() % static_cast<std::size_t>(pixels.channels) == 0 &&
           pixels.bytes.size() / static_cast<std::size_t>(pixels.channels) == needed;
}

} // namespace

bool WritePng(const Path& path, const CPngPixels& pixels, PngCompression compression) {
    try {
        return IsWhole(pixels) && WriteFileAtomically(path, Encode(pixels, compression));
    } catch (const std::exception&) {
        return false; // without memory
    }
}

} // namespace velmor
