#include "image/RunLength.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace velmor {

namespace {

constexpr std::size_t longestRun = 254;

// How many bytes from the start of [begin, end) equal the first; the range is not empty.
std::size_t LengthOfRun(const std::uint8_t* begin, const std::uint8_t* end) {
    const std::uint8_t value = *begin;
    const std::uint64_t pattern = value * std::uint64_t{0x0101010101010101};
    const std::uint8_t* at = begin + 1;
    for (; end - at >= 8; at += 8) {
        std::uint64_t word;
        std::memcpy(&word, at, sizeof word);
        if (const std::uint64_t difference = word ^ pattern; difference != 0) {
            static_assert(std::endian::native == std::endian::little);
            return static_cast<std::size_t>(at - begin) +
                   static_cast<std::size_t>(std::countr_zero(difference) / 8);
        }
    }
    while (at != end && *at == value)
        ++at;
    return static_cast<std::size_t>(at - begin);
}

} // namespace

void EncodeRuns(std::span<const std::uint8_t> plane, std::vector<CRun>& runs) {
    const std::uint8_t* at = plane.data();
    const std::uint8_t* const end = at + plane.size();
    while (at != end) {
        const std::uint8_t value = *at;
        std::size_t length = LengthOfRun(at, end);
        at += length;
        for (; length > longestRun; length -= longestRun)
            runs.push_back({value, longestRun});
        runs.push_back({value, static_cast<std::uint8_t>(length)});
    }
}

bool DecodeRuns(std::span<const std::uint8_t>& bytes, std::span<std::uint8_t> plane) {
    constexpr std::size_t chunk = 16;
    const std::uint8_t* in = bytes.data();
    const std::uint8_t* const inEnd = in + bytes.size() / sizeof(CRun) * sizeof(CRun);
    std::uint8_t* out = plane.data();
    std::uint8_t* const outEnd = out + plane.size();
    while (out != outEnd && in != inEnd) {
        const auto room = static_cast<std::size_t>(outEnd - out);
        const std::size_t count = std::min<std::size_t>(in[1], room);
        // Short runs are stored in one piece of fixed size; what is too much is overwritten by the next run.
        if (count <= chunk && room >= chunk)
            std::memset(out, in[0], chunk);
        else
            std::memset(out, in[0], count);
        out += count;
        in += sizeof(CRun);
    }
    bytes = bytes.subspan(static_cast<std::size_t>(in - bytes.data()));
    return out == outEnd;
}

} // namespace velmor
