#include "app/demo/ImportFiles.h"

namespace velmor::demo {

namespace {

using Bytes = std::vector<std::uint8_t>;

void PutInt(Bytes& bytes, std::uint32_t value, int count) {
    for (int i = 0; i < count; ++i)
        bytes.push_back(static_cast<std::uint8_t>(value >> 8 * i));
}

void PutText(Bytes& bytes, std::string_view text) {
    for (const char letter : text)
        bytes.push_back(static_cast<std::uint8_t>(letter));
}

} // namespace

bool WriteTarga(const Path& path, const CPainting& painting) {
    constexpr std::uint32_t uncompressedTrueColor = 2;
    Bytes bytes;
    PutInt(bytes, 0, 2); // no identification, no colour map
    PutInt(bytes, uncompressedTrueColor, 1);
    PutInt(bytes, 0, 4);
    PutInt(bytes, 0, 1);
    PutInt(bytes, 0, 4); // origin
    PutInt(bytes, static_cast<std::uint32_t>(painting.size.width), 2);
    PutInt(bytes, static_cast<std::uint32_t>(painting.size.height), 2);
    PutInt(bytes, 24, 1);
    PutInt(bytes, 0, 1);
    bytes.insert(bytes.end(), painting.pixels.begin(), painting.pixels.end());
    return WriteFileAtomically(path, bytes);
}

bool WriteWave(const Path& path, const std::vector<std::uint8_t>& samples) {
    const auto count = static_cast<std::uint32_t>(samples.size());
    Bytes bytes;
    PutText(bytes, "RIFF");
    PutInt(bytes, 36 + count + count % 2, 4);
    PutText(bytes, "WAVEfmt ");
    PutInt(bytes, 16, 4);
    PutInt(bytes, 1, 2); // PCM
    PutInt(bytes, 1, 2); // mono
    PutInt(bytes, soundRate, 4);
    PutInt(bytes, soundRate, 4); // bytes per second
    PutInt(bytes, 1, 2);         // block align
    PutInt(bytes, 8, 2);
    PutText(bytes, "data");
    PutInt(bytes, count, 4);
    bytes.insert(bytes.end(), samples.begin(), samples.end());
    PutInt(bytes, 0, static_cast<int>(count % 2)); // chunks have an even length
    return WriteFileAtomically(path, bytes);
}

} // namespace velmor::demo
