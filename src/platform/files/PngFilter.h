#pragma once

#include "platform/files/PngFile.h"

#include <memory>

namespace velmor {

/// The rows of a PNG as they are compressed, each with its filter in front. May throw std::bad_alloc.
///
/// A row of flat paint stays as it is: runs of a colour are copied as easily as runs of nothing, and the edges
/// between two colours are found again in the rows above. Of any other row it is the difference from the pixel
/// before or from the one above, whichever is nearer to nothing. For drawn pictures that gives smaller files than
/// the choice among all five filters, and sooner.
class CFilteredRows {
public:
    explicit CFilteredRows(const CPngRows& rows);

    std::span<const std::uint8_t> Bytes() const { return {m_bytes.get(), m_size}; }
    /// Whether most rows are of flat paint.
    bool AreFlat() const { return m_areFlat; }

private:
    std::size_t m_size;
    std::unique_ptr<std::uint8_t[]> m_bytes;
    bool m_areFlat = false;
};

} // namespace velmor
