#include "image/paint/PackedBytes.h"

#include <algorithm>
#include <cstring>

namespace velmor {

namespace {

constexpr unsigned runMark = 0x8000;
constexpr std::size_t leastRun = 5; // a shorter one costs as much as it saves

std::size_t RunLength(std::span<const std::uint8_t> bytes) {
    std::uint64_t same = 0;
    std::memset(&same, bytes.front(), sizeof same);
    std::size_t length = 1;
    for (std::uint64_t word = 0; length + sizeof word <= bytes.size(); length += sizeof word) {
        std::memcpy(&word, bytes.data() + length, sizeof word);
        if (word != same)
            break;
    }
    while (length < bytes.size() && bytes[length] == bytes.front())
        ++length;
    return length;
}

void AppendLength(std::vector<std::uint8_t>& packed, std::size_t value) {
    packed.push_back(static_cast<std::uint8_t>(value));
    packed.push_back(static_cast<std::uint8_t>(value >> 8));
}

void AppendStretch(std::vector<std::uint8_t>& packed, std::span<const std::uint8_t> stretch) {
    if (stretch.empty())
        return;
    AppendLength(packed, stretch.size());
    packed.insert(packed.end(), stretch.begin(), stretch.end());
}

} // namespace

std::vector<std::uint8_t> PackBytes(std::span<const std::uint8_t> bytes) {
    std::vector<std::uint8_t> packed;
    std::size_t stretchBegin = 0;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t length = RunLength(bytes.subspan(at));
        if (length >= leastRun) {
            AppendStretch(packed, bytes.subspan(stretchBegin, at - stretchBegin));
            AppendLength(packed, length | runMark);
            packed.push_back(bytes[at]);
            stretchBegin = at + length;
        }
        at += length;
    }
    AppendStretch(packed, bytes.subspan(stretchBegin));
    return packed;
}

std::optional<std::vector<std::uint8_t>> UnpackBytes(std::span<const std::uint8_t> packed, std::size_t size) {
    std::vector<std::uint8_t> bytes;
    bytes.reserve(size);
    while (!packed.empty()) {
        if (packed.size() < 3)
            return std::nullopt;
        const unsigned control = packed[0] | static_cast<unsigned>(packed[1]) << 8;
        const std::size_t length = control & ~runMark;
        const std::size_t stored = (control & runMark) != 0 ? 1 : length;
        packed = packed.subspan(2);
        if (stored > packed.size() || length > size - bytes.size())
            return std::nullopt;
        if ((control & runMark) != 0)
            bytes.insert(bytes.end(), length, packed.front());
        else
            bytes.insert(bytes.end(), packed.begin(), packed.begin() + static_cast<std::ptrdiff_t>(length));
        packed = packed.subspan(stored);
    }
    return bytes.size() == size ? std::optional(std::move(bytes)) : std::nullopt;
}

} // namespace velmor
