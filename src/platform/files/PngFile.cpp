#include "platform/files/PngFile.h"

#include <csetjmp>
#include <exception>
#include <png.h>
#include <vector>

namespace velmor {

namespace {

using Bytes = std::vector<std::uint8_t>;

void AppendBytes(png_structp png, png_bytep data, png_size_t count) {
    bool kept = true;
    try {
        auto& bytes = *static_cast<Bytes*>(png_get_io_ptr(png));
        bytes.insert(bytes.end(), data, data + count);
    } catch (const std::exception&) {
        kept = false;
    }
    if (!kept)
        png_error(png, "out of memory");
}

// The picture is in memory until it is complete, so there is nothing to flush.
void FlushNothing(png_structp) {}

void ReturnToEncoder(png_structp png, png_const_charp) {
    png_longjmp(png, 1);
}

void IgnoreWarning(png_structp, png_const_charp) {}

class CPngEncoder {
public:
    CPngEncoder()
        : m_png(png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, ReturnToEncoder, IgnoreWarning)),
          m_info(m_png ? png_create_info_struct(m_png) : nullptr) {}
    CPngEncoder(const CPngEncoder&) = delete;
    CPngEncoder& operator=(const CPngEncoder&) = delete;
    ~CPngEncoder() { png_destroy_write_struct(&m_png, &m_info); }

    // An error in the library jumps back here, so this function and what it calls hold no object with a destructor.
    bool Encode(const CPngPixels& pixels, int level, Bytes& bytes) {
        if (!m_info || setjmp(png_jmpbuf(m_png)))
            return false;
        png_set_write_fn(m_png, &bytes, AppendBytes, FlushNothing);
        png_set_compression_level(m_png, level);
        // For drawn pictures these two filters give smaller files than the choice among all five, and sooner.
        png_set_filter(m_png, PNG_FILTER_TYPE_BASE, PNG_FILTER_SUB | PNG_FILTER_UP);
        png_set_IHDR(m_png, m_info, static_cast<png_uint_32>(pixels.width), static_cast<png_uint_32>(pixels.height),
                     8, pixels.channels == 4 ? PNG_COLOR_TYPE_RGB_ALPHA : PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                     PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
        png_write_info(m_png, m_info);
        WriteRows(pixels);
        png_write_end(m_png, m_info);
        return true;
    }

private:
    void WriteRows(const CPngPixels& pixels) {
        const auto rowBytes = static_cast<std::size_t>(pixels.width) * static_cast<std::size_t>(pixels.channels);
        for (std::size_t row = 0; row < static_cast<std::size_t>(pixels.height); ++row)
            png_write_row(m_png, pixels.bytes.data() + row * rowBytes);
    }

    png_structp m_png;
    png_infop m_info;
};

bool IsWhole(const CPngPixels& pixels) {
    if (pixels.width <= 0 || pixels.height <= 0 || (pixels.channels != 3 && pixels.channels != 4))
        return false;
    const std::uint64_t needed =
        std::uint64_t{static_cast<std::uint32_t>(pixels.width)} * static_cast<std::uint32_t>(pixels.height);
    return pixels.bytes.size() % static_cast<std::size_t>(pixels.channels) == 0 &&
           pixels.bytes.size() / static_cast<std::size_t>(pixels.channels) == needed;
}

} // namespace

bool WritePng(const Path& path, const CPngPixels& pixels, int level) {
    Bytes bytes;
    return IsWhole(pixels) && CPngEncoder().Encode(pixels, level, bytes) && WriteFileAtomically(path, bytes);
}

} // namespace velmor
