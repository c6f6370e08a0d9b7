#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

struct ZSTD_CCtx_s;

namespace velmor {

/// The most that Decompress() makes of anything.
inline constexpr std::uint64_t mostDecompressedBytes = std::uint64_t{1} << 30;

/// Makes compressed bytes that know their size and bear a checksum of what is in them.
class CCompressor {
public:
    CCompressor();

    /// Throws std::bad_alloc where memory does not suffice or nobody could read them again.
    std::vector<std::uint8_t> Compress(std::span<const std::uint8_t> bytes);

private:
    struct CDeleter {
        void operator()(ZSTD_CCtx_s* context) const;
    };
    std::unique_ptr<ZSTD_CCtx_s, CDeleter> m_context;
};

/// What was compressed; nothing when the checksum or anything else is wrong. Throws where memory does not suffice.
std::optional<std::vector<std::uint8_t>> Decompress(std::span<const std::uint8_t> compressed);
/// The checksum that compressed bytes bear of what is in them.
std::uint32_t ChecksumIn(std::span<const std::uint8_t> compressed);

} // namespace velmor
