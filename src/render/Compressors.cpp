#include "render/Compressors.h"

#include "platform/movie/MovieWriter.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace velmor {

namespace {

constexpr std::array<CCompressor, 5> compressors = {{
    {defaultCompressor, "Microsoft Video 1, plays everywhere", "msvideo1", true, true},
    {"MJPEG", "Motion JPEG, good pictures, for editing", "mjpeg", false, true},
    {"HuffYUV", "lossless, quick", "huffyuv", false, false},
    {"FFV1", "lossless, smaller, for archives", "ffv1", false, false},
    {"Uncompressed", "full frames of 24 bits, very large", "rawvideo", false, false},
}};

bool IsSameName(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b,
                              [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

bool IsAvailable(const CCompressor& compressor) {
    return compressor.isOurs || HasMovieEncoder(std::string(compressor.encoder));
}

} // namespace

std::vector<CCompressor> AvailableCompressors() {
    std::vector<CCompressor> available;
    std::ranges::copy_if(compressors, std::back_inserter(available), IsAvailable);
    return available;
}

const CCompressor* FindCompressor(std::string_view name) {
    const auto found = std::ranges::find_if(compressors, [name](const CCompressor& compressor) {
        return IsSameName(compressor.name, name) || IsSameName(compressor.encoder, name);
    });
    return found != compressors.end() && IsAvailable(*found) ? &*found : nullptr;
}

} // namespace velmor
