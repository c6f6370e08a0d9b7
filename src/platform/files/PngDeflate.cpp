#include "platform/files/PngDeflate.h"

#include <algorithm>
#include <array>
#include <isa-l/igzip_lib.h>
#include <libdeflate.h>
#include <new>
#include <vector>

namespace velmor {

namespace {

constexpr std::size_t streamBytes = 6; // header and checksum of a zlib stream

std::unique_ptr<std::uint8_t[]> Room(std::size_t size) {
    return std::make_unique_for_overwrite<std::uint8_t[]>(size);
}

// What cannot be compressed is stored, in blocks of fewer than 64 K with five bytes in front.
std::size_t MostBytesOf(std::size_t size) {
    constexpr std::size_t block = 32768, blockHead = 5, reserve = 4096;
    return size + (size / block + 1) * blockHead + streamBytes + reserve;
}

// ISA-L is several times as fast as libdeflate is at its fastest. Throws when it fails.
CPngStream DeflateFast(std::span<const std::uint8_t> bytes) {
    const std::size_t room = MostBytesOf(bytes.size());
    CPngStream made{Room(room), 0};
    std::vector<std::uint8_t> memory(ISAL_DEF_LVL1_DEFAULT);
    isal_zstream stream{};
    isal_deflate_init(&stream);
    stream.level = 1;
    stream.level_buf = memory.data();
    stream.level_buf_size = static_cast<std::uint32_t>(memory.size());
    stream.gzip_flag = IGZIP_ZLIB;
    constexpr std::size_t part = std::size_t{1} << 30; // lengths have 32 bits there
    while (stream.internal_state.state != ZSTATE_END) {
        const std::size_t given = std::min(part, bytes.size());
        const std::size_t left = std::min(part, room - made.size);
        stream.next_in = const_cast<std::uint8_t*>(bytes.data()); // which it only reads
        stream.avail_in = static_cast<std::uint32_t>(given);
        stream.end_of_stream = given == bytes.size() ? 1 : 0;
        stream.next_out = made.room.get() + made.size;
        stream.avail_out = static_cast<std::uint32_t>(left);
        if (isal_deflate(&stream) != COMP_OK || (stream.avail_in == given && stream.avail_out == left))
            throw std::bad_alloc();
        bytes = bytes.subspan(given - stream.avail_in);
        made.size += left - stream.avail_out;
    }
    return made;
}

CPngStream DeflateWell(std::span<const std::uint8_t> bytes, int level) {
    const std::unique_ptr<libdeflate_compressor, decltype(&libdeflate_free_compressor)> compressor(
        libdeflate_alloc_compressor(level), libdeflate_free_compressor);
    if (!compressor)
        throw std::bad_alloc();
    const std::size_t bound = libdeflate_zlib_compress_bound(compressor.get(), bytes.size());
    CPngStream made{Room(bound), 0};
    made.size = libdeflate_zlib_compress(compressor.get(), bytes.data(), bytes.size(), made.room.get(), bound);
    return made;
}

} // namespace

CPngStream Deflate(const CFilteredRows& rows, PngCompression compression) {
    if (compression == PngCompression::Fast)
        return DeflateFast(rows.Bytes());
    // Flat paint takes so little time that a higher level can be afforded.
    constexpr int normal = 4, normalFlat = 6, best = 10;
    if (compression == PngCompression::Normal)
        return DeflateWell(rows.Bytes(), rows.AreFlat() ? normalFlat : normal);
    return DeflateWell(rows.Bytes(), best);
}

} // namespace velmor
