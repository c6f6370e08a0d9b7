#include "render/FrameFiles.h"

#include "platform/files/PngFile.h"

#include <algorithm>
#include <limits>

namespace velmor {

namespace {

constexpr std::size_t frameChannels = 3;

std::size_t PixelCount(const CFrameBuffer& frame) {
    return static_cast<std::size_t>(frame.width) * static_cast<std::size_t>(frame.height);
}

void AppendLittleEndian(std::vector<std::uint8_t>& bytes, std::uint32_t value, int count) {
    for (int i = 0; i < count; ++i)
        bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}

bool WriteFramePng(const Path& path, const CFrameBuffer& frame, const AlphaPlane& alpha) {
    const int channels = alpha.empty() ? 3 : 4;
    const auto width = static_cast<std::size_t>(frame.width);
    std::vector<std::uint8_t> bytes;
    bytes.reserve(PixelCount(frame) * static_cast<std::size_t>(channels));
    for (int y = frame.height - 1; y >= 0; --y) {
        const std::size_t row = static_cast<std::size_t>(y) * width;
        for (std::size_t i = row; i < row + width; ++i) {
            const std::uint8_t* pixel = &frame.pixels[i * frameChannels];
            bytes.insert(bytes.end(), {pixel[2], pixel[1], pixel[0]});
            if (!alpha.empty())
                bytes.push_back(alpha[i]);
        }
    }
    return WritePng(path, {frame.width, frame.height, channels, bytes});
}

// Truevision TGA 2.0, uncompressed true colour, bottom row first.
bool WriteFrameTarga(const Path& path, const CFrameBuffer& frame, const AlphaPlane& alpha) {
    constexpr int alphaBits = 8; // in the descriptor of a 32-bit image
    std::vector<std::uint8_t> bytes = {0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    AppendLittleEndian(bytes, static_cast<std::uint32_t>(frame.width), 2);
    AppendLittleEndian(bytes, static_cast<std::uint32_t>(frame.height), 2);
    bytes.push_back(alpha.empty() ? 24 : 32);
    bytes.push_back(alpha.empty() ? 0 : alphaBits);
    if (alpha.empty())
        bytes.insert(bytes.end(), frame.pixels.begin(), frame.pixels.end());
    for (std::size_t i = 0; i < alpha.size(); ++i) {
        const std::uint8_t* pixel = &frame.pixels[i * frameChannels];
        bytes.insert(bytes.end(), {pixel[0], pixel[1], pixel[2], alpha[i]});
    }
    return WriteFileAtomically(path, bytes);
}

// Windows bitmap with a BITMAPINFOHEADER, 24 bits, bottom row first, rows padded to four bytes.
bool WriteFrameBitmap(const Path& path, const CFrameBuffer& frame) {
    constexpr std::uint32_t headerSize = 14 + 40;
    const std::size_t rowBytes = static_cast<std::size_t>(frame.width) * frameChannels;
    const std::size_t padding = (4 - rowBytes % 4) % 4;
    const std::size_t bits = (rowBytes + padding) * static_cast<std::size_t>(frame.height);
    if (bits > std::numeric_limits<std::uint32_t>::max() - headerSize)
        return false;
    std::vector<std::uint8_t> bytes = {'B', 'M'};
    bytes.reserve(headerSize + bits);
    AppendLittleEndian(bytes, headerSize + static_cast<std::uint32_t>(bits), 4);
    AppendLittleEndian(bytes, 0, 4);
    AppendLittleEndian(bytes, headerSize, 4);
    AppendLittleEndian(bytes, 40, 4);
    AppendLittleEndian(bytes, static_cast<std::uint32_t>(frame.width), 4);
    AppendLittleEndian(bytes, static_cast<std::uint32_t>(frame.height), 4);
    AppendLittleEndian(bytes, 1, 2);
    AppendLittleEndian(bytes, 24, 2);
    AppendLittleEndian(bytes, 0, 4);
    AppendLittleEndian(bytes, static_cast<std::uint32_t>(bits), 4);
    bytes.resize(headerSize, 0);
    for (std::size_t row = 0; row < frame.pixels.size(); row += rowBytes) {
        const auto begin = frame.pixels.begin() + static_cast<std::ptrdiff_t>(row);
        bytes.insert(bytes.end(), begin, begin + static_cast<std::ptrdiff_t>(rowBytes));
        bytes.insert(bytes.end(), padding, 0);
    }
    return WriteFileAtomically(path, bytes);
}

} // namespace

bool WriteFrameFile(const Path& path, FrameFormat format, const CFrameBuffer& frame, const AlphaPlane& alpha) {
    switch (format) {
    case FrameFormat::Targa:
        return WriteFrameTarga(path, frame, alpha);
    case FrameFormat::Bitmap:
        return WriteFrameBitmap(path, frame);
    case FrameFormat::Png:
        break;
    }
    return WriteFramePng(path, frame, alpha);
}

AlphaPlane SeparateBackground(CFrameBuffer& frame, const CFrameBuffer& overWhite) {
    AlphaPlane alpha(PixelCount(frame));
    for (std::size_t i = 0; i < alpha.size(); ++i) {
        std::uint8_t* dark = &frame.pixels[i * frameChannels];
        const std::uint8_t* light = &overWhite.pixels[i * frameChannels];
        int shine = 255;
        for (std::size_t c = 0; c < frameChannels; ++c)
            shine = std::min(shine, light[c] - dark[c]);
        const int opacity = 255 - std::max(shine, 0);
        alpha[i] = static_cast<std::uint8_t>(opacity);
        for (std::size_t c = 0; c < frameChannels && opacity > 0; ++c)
            dark[c] = static_cast<std::uint8_t>(std::min(255, (dark[c] * 255 + opacity / 2) / opacity));
    }
    return alpha;
}

} // namespace velmor
