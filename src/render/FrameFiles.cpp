#include "render/FrameFiles.h"

#include "image/render/ChannelOrder.h"
#include "render/FrameFileHeaders.h"

#include <algorithm>
#include <limits>

namespace velmor {

namespace {

std::size_t PixelCount(const CFrameBuffer& frame) {
    return static_cast<std::size_t>(frame.width) * static_cast<std::size_t>(frame.height);
}

// A row of a PNG with alpha.
void JoinRow(const std::uint8_t* from, const std::uint8_t* alpha, std::size_t width, std::uint8_t* to) {
    for (std::size_t i = 0; i < width; ++i, from += frameChannels, to += frameChannels + 1) {
        to[0] = from[2];
        to[1] = from[1];
        to[2] = from[0];
        to[3] = alpha[i];
    }
}

bool WriteFramePng(const Path& path, const CFrameBuffer& frame, const AlphaPlane& alpha,
                   PngCompression compression) {
    const auto width = static_cast<std::size_t>(frame.width);
    const auto fill = [&](int y, std::uint8_t* row) {
        const std::size_t first = static_cast<std::size_t>(frame.height - 1 - y) * width;
        const auto pixels = std::span(frame.pixels).subspan(first * frameChannels, width * frameChannels);
        if (alpha.empty())
            SwapRedAndBlue(pixels, row);
        else
            JoinRow(pixels.data(), alpha.data() + first, width, row);
    };
    return WritePng(path, {frame.width, frame.height, alpha.empty() ? 3 : 4, fill}, compression);
}

bool WriteFrameTarga(const Path& path, const CFrameBuffer& frame, const AlphaPlane& alpha) {
    std::vector<std::uint8_t> bytes = TargaHeader({frame.width, frame.height}, !alpha.empty());
    if (alpha.empty())
        bytes.insert(bytes.end(), frame.pixels.begin(), frame.pixels.end());
    for (std::size_t i = 0; i < alpha.size(); ++i) {
        const std::uint8_t* pixel = &frame.pixels[i * frameChannels];
        bytes.insert(bytes.end(), {pixel[0], pixel[1], pixel[2], alpha[i]});
    }
    return WriteFileAtomically(path, bytes);
}

bool WriteFrameBitmap(const Path& path, const CFrameBuffer& frame) {
    const std::size_t rowBytes = static_cast<std::size_t>(frame.width) * frameChannels;
    const std::size_t padding = BitmapRowBytes(frame.width) - rowBytes;
    const std::size_t bits = (rowBytes + padding) * static_cast<std::size_t>(frame.height);
    if (bits > std::numeric_limits<std::uint32_t>::max() - bitmapHeaderBytes)
        return false;
    std::vector<std::uint8_t> bytes = BitmapHeader({frame.width, frame.height}, bits);
    bytes.reserve(bitmapHeaderBytes + bits);
    for (std::size_t row = 0; row < frame.pixels.size(); row += rowBytes) {
        const auto begin = frame.pixels.begin() + static_cast<std::ptrdiff_t>(row);
        bytes.insert(bytes.end(), begin, begin + static_cast<std::ptrdiff_t>(rowBytes));
        bytes.insert(bytes.end(), padding, 0);
    }
    return WriteFileAtomically(path, bytes);
}

} // namespace

bool WriteFrameFile(const Path& path, FrameFormat format, const CFrameBuffer& frame, const AlphaPlane& alpha,
                    PngCompression compression) {
    switch (format) {
    case FrameFormat::Targa:
        return WriteFrameTarga(path, frame, alpha);
    case FrameFormat::Bitmap:
        return WriteFrameBitmap(path, frame);
    case FrameFormat::Png:
        break;
    }
    return WriteFramePng(path, frame, alpha, compression);
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
