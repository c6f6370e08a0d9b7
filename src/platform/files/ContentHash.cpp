#include "platform/files/ContentHash.h"

#include <cstring>

namespace velmor {

namespace {

constexpr std::uint64_t factor = 0x9E3779B97F4A7C15; // odd, its bits as mixed as those of the golden ratio

std::uint64_t Mix(std::uint64_t hash, std::uint64_t word) {
    hash = (hash ^ word) * factor;
    return hash ^ (hash >> 32);
}

} // namespace

std::uint64_t ContentHash(std::span<const std::uint8_t> bytes) {
    std::uint64_t hash = Mix(0, bytes.size());
    for (std::uint64_t word = 0; !bytes.empty(); word = 0) {
        const std::size_t count = bytes.size() < sizeof word ? bytes.size() : sizeof word;
        std::memcpy(&word, bytes.data(), count);
        hash = Mix(hash, word);
        bytes = bytes.subspan(count);
    }
    return hash;
}

} // namespace velmor
