#include "render/FrameReader.h"

#include "platform/files/PngReader.h"
#include "render/FrameFileHeaders.h"

#include <algorithm>
#include <optional>
#include <span>

namespace velmor {

namespace {

std::size_t PixelCount(CSize size) {
    return static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
}

using FileSpan = std::span<const std::uint8_t>;

// The bytes after a header that has to be this one; nothing when it is another or so many do not follow.
std::optional<FileSpan> PixelsAfter(FileSpan file, FileSpan header, std::size_t pixelBytes) {
    if (file.size() != header.size() + pixelBytes || !std::ranges::equal(file.first(header.size()), header))
        return std::nullopt;
    return file.subspan(header.size());
}

// Blue green red of pixels that have `channels` bytes each.
void TakePixels(FileSpan pixels, std::size_t channels, CFrameBuffer& frame) {
    frame.pixels.resize(pixels.size() / channels * frameChannels);
    std::uint8_t* to = frame.pixels.data();
    for (const std::uint8_t* from = pixels.data(); from != pixels.data() + pixels.size(); from += channels)
        to = std::copy_n(from, frameChannels, to);
}

bool ReadFrameTarga(FileSpan file, CSize size, bool withAlpha, CFrameBuffer& frame) {
    const std::size_t channels = withAlpha ? frameChannels + 1 : frameChannels;
    const auto pixels = PixelsAfter(file, TargaHeader(size, withAlpha), PixelCount(size) * channels);
    if (pixels)
        TakePixels(*pixels, channels, frame);
    return pixels.has_value();
}

bool ReadFrameBitmap(FileSpan file, CSize size, CFrameBuffer& frame) {
    const std::size_t rowBytes = BitmapRowBytes(size.width);
    const std::size_t bits = rowBytes * static_cast<std::size_t>(size.height);
    const auto pixels = PixelsAfter(file, BitmapHeader(size, bits), bits);
    if (!pixels)
        return false;
    const auto width = static_cast<std::size_t>(size.width) * frameChannels;
    frame.pixels.clear();
    for (std::size_t row = 0; row < bits; row += rowBytes) {
        const FileSpan bytes = pixels->subspan(row, width);
        frame.pixels.insert(frame.pixels.end(), bytes.begin(), bytes.end());
    }
    return true;
}

bool ReadFramePng(FileSpan file, CSize size, bool withAlpha, CFrameBuffer& frame) {
    CReadPng read;
    if (ReadPng(file, std::max(size.width, size.height), read) != PngResult::Done || read.width != size.width ||
        read.height != size.height || (read.channels == 4) != withAlpha)
        return false;
    const auto channels = static_cast<std::size_t>(read.channels);
    const auto width = static_cast<std::size_t>(size.width);
    frame.pixels.resize(PixelCount(size) * frameChannels);
    std::uint8_t* to = frame.pixels.data();
    for (int y = size.height - 1; y >= 0; --y) {
        const std::uint8_t* from = read.bytes.data() + static_cast<std::size_t>(y) * width * channels;
        for (std::size_t x = 0; x < width; ++x, from += channels, to += frameChannels)
            std::reverse_copy(from, from + frameChannels, to);
    }
    return true;
}

bool DecodeFrame(FileSpan file, FrameFormat format, CSize size, bool withAlpha, CFrameBuffer& frame) {
    switch (format) {
    case FrameFormat::Targa:
        return ReadFrameTarga(file, size, withAlpha, frame);
    case FrameFormat::Bitmap:
        return ReadFrameBitmap(file, size, frame);
    case FrameFormat::Png:
        break;
    }
    return ReadFramePng(file, size, withAlpha, frame);
}

} // namespace

CStatus ReadFrameFile(const Path& path, FrameFormat format, CSize size, bool withAlpha, CFrameBuffer& frame) {
    if (!FileExists(path))
        return CStatus::Failure(Utf8Of(path) + " is missing");
    frame.width = size.width;
    frame.height = size.height;
    const std::optional<CFileBytes> file = ReadWholeFile(path);
    if (file && DecodeFrame(file->Span(), format, size, withAlpha, frame))
        return {};
    return CStatus::Failure(Utf8Of(path) + " is damaged or no frame of " + std::to_string(size.width) + " x " +
                            std::to_string(size.height) + " pixels " + (withAlpha ? "with" : "without") +
                            " transparency");
}

} // namespace velmor
