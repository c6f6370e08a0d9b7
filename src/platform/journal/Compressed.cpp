#include "platform/journal/Compressed.h"

#include <algorithm>
#include <new>
#include <zstd.h>

namespace velmor {

namespace {

constexpr int level = 1; // twice as fast as the usual one, and drawings are flat
constexpr std::size_t checksumBytes = 4;
/// A block of this many bytes takes four bytes at least, so nothing stands for more.
constexpr std::uint64_t mostBytesInByte = ZSTD_BLOCKSIZE_MAX;

} // namespace

void CCompressor::CDeleter::operator()(ZSTD_CCtx_s* context) const {
    ZSTD_freeCCtx(context);
}

CCompressor::CCompressor() : m_context(ZSTD_createCCtx()) {
    if (!m_context)
        throw std::bad_alloc();
    ZSTD_CCtx_setParameter(m_context.get(), ZSTD_c_compressionLevel, level);
    ZSTD_CCtx_setParameter(m_context.get(), ZSTD_c_checksumFlag, 1);
}

std::vector<std::uint8_t> CCompressor::Compress(std::span<const std::uint8_t> bytes) {
    if (bytes.size() > mostDecompressedBytes)
        throw std::bad_alloc(); // it could not be read again
    std::vector<std::uint8_t> compressed(ZSTD_compressBound(bytes.size()));
    const std::size_t size =
        ZSTD_compress2(m_context.get(), compressed.data(), compressed.size(), bytes.data(), bytes.size());
    if (ZSTD_isError(size) != 0)
        throw std::bad_alloc(); // the room suffices, so nothing else can be missing
    compressed.resize(size);
    compressed.shrink_to_fit();
    return compressed;
}

std::optional<std::vector<std::uint8_t>> Decompress(std::span<const std::uint8_t> compressed) {
    const unsigned long long size = ZSTD_getFrameContentSize(compressed.data(), compressed.size());
    // Two large numbers say that the size is missing or cannot be read.
    if (size > std::min(mostDecompressedBytes, compressed.size() * mostBytesInByte))
        return std::nullopt;
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(size));
    if (ZSTD_decompress(bytes.data(), bytes.size(), compressed.data(), compressed.size()) != size)
        return std::nullopt;
    return bytes;
}

std::uint32_t ChecksumIn(std::span<const std::uint8_t> compressed) {
    std::uint32_t checksum = 0;
    for (const std::uint8_t byte : compressed.last(std::min(checksumBytes, compressed.size())))
        checksum = checksum << 8 | byte;
    return checksum;
}

} // namespace velmor
