#pragma once

#include "platform/files/PngFile.h"

#include <memory>

namespace velmor {

enum class PngFilters {
    None,
    /// For each row the difference from the pixel before it or from the one above it, whichever is nearer to
    /// nothing. For drawn pictures that gives smaller files than the choice among all five filters, and sooner.
    Chosen
};

/// The rows of a PNG as they are compressed, each with its filter in front. May throw std::bad_alloc.
class CFilteredRows {
public:
    CFilteredRows(const CPngPixels& pixels, PngFilters filters);

    std::span<const std::uint8_t> Bytes() const { return {m_bytes.get(), m_size}; }

private:
    std::size_t m_size;
    std::unique_ptr<std::uint8_t[]> m_bytes;
};

} // namespace velmor
