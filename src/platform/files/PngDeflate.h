#pragma once

#include "platform/files/PngFilter.h"

#include <memory>

namespace velmor {

/// Bytes in memory that may be larger: most of it is never touched.
struct CPngStream {
    std::unique_ptr<std::uint8_t[]> room;
    std::size_t size = 0;

    std::span<const std::uint8_t> Bytes() const { return {room.get(), size}; }
};

/// The zlib stream of a PNG's rows. Throws std::bad_alloc without memory.
CPngStream Deflate(const CFilteredRows& rows, PngCompression compression);

} // namespace velmor
