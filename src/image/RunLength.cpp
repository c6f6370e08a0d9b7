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

CRunReader::CRunReader(std::span<const std::uint8_t> pairs)
    : m_at(pairs.data()), m_end(m_at + pairs.size() / sizeof(CRun) * sizeof(CRun)) {}

bool CRunReader::BeginNext() {
    if (m_at == m_end)
        return false;
    m_value = m_at[0];
    m_left = m_at[1];
    m_at += sizeof(CRun);
    return true;
}

bool CRunReader::Read(std::span<std::uint8_t> values) {
    constexpr std::size_t chunk = 16;
    std::uint8_t* out = values.data();
    std::uint8_t* const outEnd = out + values.size();
    CRunReader reader = *this; // which no byte that is stored can change
    while (out != outEnd && (reader.m_left > 0 || reader.BeginNext())) {
        const auto room = static_cast<std::size_t>(outEnd - out);
        const std::size_t count = std::min(reader.m_left, room);
        // Short runs are stored in one piece of fixed size; what is too much is overwritten by the next run.
        if (count <= chunk && room >= chunk)
            std::memset(out, reader.m_value, chunk);
        else
            std::memset(out, reader.m_value, count);
        out += count;
        reader.m_left -= count;
    }
    *this = reader;
    return out == outEnd;
}

bool CRunReader::Skip(std::size_t count) {
    SkipManyRuns(count);
    while (count > m_left) {
        count -= m_left;
        m_left = 0;
        if (!BeginNext())
            return false;
    }
    m_left -= count;
    return true;
}

// As many runs at a time as surely end before `count` values more.
void CRunReader::SkipManyRuns(std::size_t& count) {
    constexpr std::ptrdiff_t many = 32;
    constexpr std::size_t mostValues = many * 255;
    while (count > m_left + mostValues && (m_end - m_at) / static_cast<std::ptrdiff_t>(sizeof(CRun)) >= many) {
        unsigned sum = 0;
        for (std::ptrdiff_t i = 0; i < many; ++i)
            sum += m_at[2 * i + 1];
        count -= m_left + sum;
        m_left = 0;
        m_at += 2 * many;
    }
}

bool DecodeRuns(std::span<const std::uint8_t>& bytes, std::span<std::uint8_t> plane) {
    CRunReader reader(bytes);
    const bool isWhole = reader.Read(plane);
    bytes = bytes.subspan(static_cast<std::size_t>(reader.Rest().data() - bytes.data()));
    return isWhole;
}

} // namespace velmor
