#include "platform/files/PngFilter.h"

#include <algorithm>
#include <cstdlib>
#include <utility>
#include <vector>

namespace velmor {

namespace {

// What stands in front of a row.
enum FilterType : std::uint8_t { typeNone = 0, typeSub = 1, typeUp = 2 };

// How many of `count` bytes are not the same as the others.
std::size_t CountUnlike(const std::uint8_t* bytes, const std::uint8_t* others, std::size_t count) {
    std::size_t unlike = 0;
    constexpr std::size_t part = 240; // which can be counted in a byte
    for (std::size_t begin = 0; begin < count; begin += part) {
        std::uint8_t partUnlike = 0;
        for (std::size_t i = begin; i < std::min(begin + part, count); ++i)
            partUnlike = static_cast<std::uint8_t>(partUnlike + (bytes[i] != others[i] ? 1 : 0));
        unlike += partUnlike;
    }
    return unlike;
}

// The difference of `count` bytes from others, and how far it is from nothing in sum, as signed numbers.
std::uint64_t Subtract(const std::uint8_t* row, const std::uint8_t* others, std::size_t count,
                       std::uint8_t* difference) {
    for (std::size_t i = 0; i < count; ++i)
        difference[i] = static_cast<std::uint8_t>(row[i] - others[i]);
    std::uint64_t sum = 0;
    constexpr std::size_t part = 4096; // whose sum is counted in fewer bits
    for (std::size_t begin = 0; begin < count; begin += part) {
        std::uint32_t partSum = 0;
        for (std::size_t i = begin; i < std::min(begin + part, count); ++i)
            partSum +=
                static_cast<std::uint32_t>(std::abs(static_cast<int>(static_cast<std::int8_t>(difference[i]))));
        sum += partSum;
    }
    return sum;
}

/// Filters one row after another.
class CRowFilter {
public:
    CRowFilter(std::size_t channels, std::size_t rowBytes)
        : m_channels(channels), m_nothing(channels), m_row(rowBytes), m_above(rowBytes), m_fromAbove(rowBytes) {}

    /// Where the next row is to be put.
    std::uint8_t* Row() { return m_row.data(); }

    /// Writes that row with its filter in front.
    FilterType Filter(std::uint8_t* out) {
        const auto type = IsFlat() ? typeNone : Difference(out + 1);
        *out = type;
        if (type != typeSub)
            std::ranges::copy(type == typeUp ? m_fromAbove : m_row, out + 1);
        std::swap(m_row, m_above);
        return type;
    }

private:
    bool IsFlat() const {
        return CountUnlike(m_row.data() + m_channels, m_row.data(), m_row.size() - m_channels) < m_row.size() / 4;
    }

    // The difference from the pixel before; or from the one above, in m_fromAbove.
    FilterType Difference(std::uint8_t* fromBefore) {
        const std::uint64_t sumBefore =
            Subtract(m_row.data(), m_nothing.data(), m_channels, fromBefore) +
            Subtract(m_row.data() + m_channels, m_row.data(), m_row.size() - m_channels, fromBefore + m_channels);
        const std::uint64_t sumAbove = Subtract(m_row.data(), m_above.data(), m_row.size(), m_fromAbove.data());
        return sumAbove < sumBefore ? typeUp : typeSub;
    }

    const std::size_t m_channels;
    const std::vector<std::uint8_t> m_nothing;
    std::vector<std::uint8_t> m_row;
    std::vector<std::uint8_t> m_above;
    std::vector<std::uint8_t> m_fromAbove;
};

} // namespace

CFilteredRows::CFilteredRows(const CPngRows& rows) {
    const auto channels = static_cast<std::size_t>(rows.channels);
    const std::size_t rowBytes = static_cast<std::size_t>(rows.width) * channels;
    const auto height = static_cast<std::size_t>(rows.height);
    m_size = (rowBytes + 1) * height;
    m_bytes = std::make_unique_for_overwrite<std::uint8_t[]>(m_size);
    CRowFilter filter(channels, rowBytes);
    std::size_t flatRows = 0;
    for (std::size_t y = 0; y < height; ++y) {
        rows.fill(static_cast<int>(y), filter.Row());
        flatRows += filter.Filter(m_bytes.get() + y * (rowBytes + 1)) == typeNone ? 1 : 0;
    }
    m_areFlat = flatRows > height / 2;
}

} // namespace velmor
