#include "platform/files/TiffReader.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <memory>
#include <tiffio.h>

namespace velmor {

namespace {

/// A row takes a bit at least, however it is compressed.
constexpr std::uint64_t mostRowsInByte = 8;
/// Of the library, besides the pixels that are handed out.
constexpr tmsize_t mostBytesInBlock = tmsize_t{1} << 28;

/// A file in memory, as the library reads one.
struct CTiffInput {
    std::span<const std::uint8_t> bytes;
    std::uint64_t position = 0;
};

CTiffInput& InputOf(thandle_t handle) {
    return *static_cast<CTiffInput*>(handle);
}

tmsize_t Read(thandle_t handle, void* target, tmsize_t count) {
    CTiffInput& input = InputOf(handle);
    const std::uint64_t begin = std::min<std::uint64_t>(input.position, input.bytes.size());
    const std::uint64_t taken =
        std::min<std::uint64_t>(static_cast<std::uint64_t>(count), input.bytes.size() - begin);
    std::memcpy(target, input.bytes.data() + begin, taken);
    input.position = begin + taken;
    return static_cast<tmsize_t>(taken);
}

tmsize_t WriteNothing(thandle_t, void*, tmsize_t) {
    return -1;
}

toff_t Seek(thandle_t handle, toff_t offset, int from) {
    CTiffInput& input = InputOf(handle);
    const std::uint64_t base = from == SEEK_SET ? 0 : from == SEEK_CUR ? input.position : input.bytes.size();
    input.position = base + offset;
    return input.position;
}

int Close(thandle_t) {
    return 0;
}

toff_t SizeOf(thandle_t handle) {
    return InputOf(handle).bytes.size();
}

int Silence(TIFF*, void*, const char*, const char*, std::va_list) {
    return 1;
}

struct CTiffCloser {
    void operator()(TIFF* tiff) const { TIFFClose(tiff); }
    void operator()(TIFFOpenOptions* options) const { TIFFOpenOptionsFree(options); }
};
using Tiff = std::unique_ptr<TIFF, CTiffCloser>;

Tiff Open(CTiffInput& input) {
    const std::unique_ptr<TIFFOpenOptions, CTiffCloser> options(TIFFOpenOptionsAlloc());
    TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(), mostBytesInBlock);
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), Silence, nullptr);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), Silence, nullptr);
    return Tiff(TIFFClientOpenExt("", "rm", &input, Read, WriteNothing, Seek, Close, SizeOf, nullptr, nullptr,
                                  options.get()));
}

// Colours come multiplied by alpha.
std::uint8_t Divided(std::uint32_t color, std::uint32_t alpha) {
    return alpha == 0 ? 0
                      : static_cast<std::uint8_t>(std::min<std::uint32_t>(255, (color * 255 + alpha / 2) / alpha));
}

std::vector<std::uint8_t> BytesOf(const std::vector<std::uint32_t>& pixels) {
    std::vector<std::uint8_t> bytes;
    bytes.reserve(pixels.size() * 4);
    for (const std::uint32_t pixel : pixels) {
        const std::uint32_t alpha = TIFFGetA(pixel);
        bytes.insert(bytes.end(), {Divided(TIFFGetR(pixel), alpha), Divided(TIFFGetG(pixel), alpha),
                                   Divided(TIFFGetB(pixel), alpha), static_cast<std::uint8_t>(alpha)});
    }
    return bytes;
}

} // namespace

TiffResult ReadTiff(std::span<const std::uint8_t> file, int largestSide, CReadTiff& picture) {
    picture = {};
    CTiffInput input{file};
    const Tiff tiff = Open(input);
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    if (!tiff || TIFFGetField(tiff.get(), TIFFTAG_IMAGEWIDTH, &width) == 0 ||
        TIFFGetField(tiff.get(), TIFFTAG_IMAGELENGTH, &height) == 0 || width == 0 || height == 0)
        return TiffResult::Corrupt;
    const auto most = static_cast<std::uint32_t>(largestSide);
    if (width > most || height > most)
        return TiffResult::TooLarge;
    if (height > file.size() * mostRowsInByte)
        return TiffResult::Corrupt;
    std::vector<std::uint32_t> pixels(std::size_t{width} * height);
    if (TIFFReadRGBAImageOriented(tiff.get(), width, height, pixels.data(), ORIENTATION_TOPLEFT, 1) == 0)
        return TiffResult::Corrupt;
    picture = {static_cast<int>(width), static_cast<int>(height), BytesOf(pixels)};
    return TiffResult::Done;
}

} // namespace velmor
