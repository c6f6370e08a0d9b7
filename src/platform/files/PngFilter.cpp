#include "platform/files/PngFilter.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace velmor {

namespace {

// What stands in front of a row.
enum FilterType : std::uint8_t { typeNone = 0, typeSub = 1, typeUp = 2 };

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

} // namespace

CFilteredRows::CFilteredRows(const CPngPixels& pixels, PngFilters filters) {
    const auto channels = static_cast<std::size_t>(pixels.channels);
    const std::size_t rowBytes = static_cast<std::size_t>(pixels.width) * channels;
    const auto height = static_cast<std::size_t>(pixels.height);
    m_size = (rowBytes + 1) * height;
    m_bytes = std::make_unique_for_overwrite<std::uint8_t[]>(m_size);
    const std::vector<std::uint8_t> nothing(rowBytes);
    std::vector<std::uint8_t> fromAbove(rowBytes);
    for (std::size_t y = 0; y < height; ++y) {
        const std::uint8_t* row = pixels.bytes.data() + y * rowBytes;
        std::uint8_t* out = m_bytes.get() + y * (rowBytes + 1);
        *out++ = typeNone;
        if (filters == PngFilters::None) {
            std::copy_n(row, rowBytes, out);
            continue;
        }
        const std::uint64_t sumBefore = Subtract(row, nothing.data(), channels, out) +
                                        Subtract(row + channels, row, rowBytes - channels, out + channels);
        const std::uint64_t sumAbove =
            Subtract(row, y > 0 ? row - rowBytes : nothing.data(), rowBytes, fromAbove.data());
        out[-1] = typeSub;
        if (sumAbove < sumBefore) {
            out[-1] = typeUp;
            std::ranges::copy(fromAbove, out);
        }
    }
}

} // namespace velmor
