#include "render/FrameFileHeaders.h"

namespace velmor {

namespace {

void AppendLittleEndian(std::vector<std::uint8_t>& bytes, std::uint32_t value, int count) {
    for (int i = 0; i < count; ++i)
        bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}

} // namespace

std::vector<std::uint8_t> TargaHeader(CSize size, bool withAlpha) {
    constexpr int alphaBits = 8; // in the descriptor of a 32-bit image
    std::vector<std::uint8_t> bytes = {0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    AppendLittleEndian(bytes, static_cast<std::uint32_t>(size.width), 2);
    AppendLittleEndian(bytes, static_cast<std::uint32_t>(size.height), 2);
    bytes.push_back(withAlpha ? 32 : 24);
    bytes.push_back(withAlpha ? alphaBits : 0);
    return bytes;
}

std::size_t BitmapRowBytes(int width) {
    return (static_cast<std::size_t>(width) * frameChannels + 3) / 4 * 4;
}

std::vector<std::uint8_t> BitmapHeader(CSize size, std::size_t bits) {
    std::vector<std::uint8_t> bytes = {'B', 'M'};
    AppendLittleEndian(bytes, static_cast<std::uint32_t>(bitmapHeaderBytes + bits), 4);
    AppendLittleEndian(bytes, 0, 4);
    AppendLittleEndian(bytes, bitmapHeaderBytes, 4);
    AppendLittleEndian(bytes, 40, 4);
    AppendLittleEndian(bytes, static_cast<std::uint32_t>(size.width), 4);
    AppendLittleEndian(bytes, static_cast<std::uint32_t>(size.height), 4);
    AppendLittleEndian(bytes, 1, 2);
    AppendLittleEndian(bytes, 24, 2);
    AppendLittleEndian(bytes, 0, 4);
    AppendLittleEndian(bytes, static_cast<std::uint32_t>(bits), 4);
    bytes.resize(bitmapHeaderBytes, 0);
    return bytes;
}

} // namespace velmor
