#include "platform/files/PngReader.h"

#include <csetjmp>
#include <cstring>
#include <png.h>

namespace velmor {

namespace {

/// What deflate makes of a byte at most, rounded up.
constexpr std::uint64_t mostExpansion = 1040;
/// Of the chunks beside the pixels, which nobody reads here.
constexpr png_alloc_size_t mostChunkBytes = 1 << 20;

void TakeBytes(png_structp png, png_bytep target, png_size_t count) {
    auto& rest = *static_cast<std::span<const std::uint8_t>*>(png_get_io_ptr(png));
    if (count > rest.size())
        png_error(png, "early end");
    std::memcpy(target, rest.data(), count);
    rest = rest.subspan(count);
}

void ReturnToDecoder(png_structp png, png_const_charp) {
    png_longjmp(png, 1);
}

void IgnoreWarning(png_structp, png_const_charp) {}

/// An error in the library jumps back into the function that called it, so those functions hold no object with a
/// destructor.
class CPngDecoder {
public:
    CPngDecoder(std::span<const std::uint8_t> file, CReadPng& picture)
        : m_fileBytes(file.size()),
          m_rest(file),
          m_picture(picture),
          m_png(png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, ReturnToDecoder, IgnoreWarning)),
          m_info(m_png ? png_create_info_struct(m_png) : nullptr) {}
    CPngDecoder(const CPngDecoder&) = delete;
    CPngDecoder& operator=(const CPngDecoder&) = delete;
    ~CPngDecoder() { png_destroy_read_struct(&m_png, &m_info, nullptr); }

    PngResult Decode(int largestSide) {
        if (!m_info || !ReadHeader())
            return PngResult::Corrupt;
        if (m_width > static_cast<std::uint32_t>(largestSide) || m_height > static_cast<std::uint32_t>(largestSide))
            return PngResult::TooLarge;
        if (!Prepare() || m_pixelBytes > m_fileBytes * mostExpansion)
            return PngResult::Corrupt;
        m_picture.width = static_cast<int>(m_width);
        m_picture.height = static_cast<int>(m_height);
        m_picture.bytes.resize(m_rowBytes * m_height);
        return ReadRows() ? PngResult::Done : PngResult::Corrupt;
    }

private:
    [[nodiscard]] bool ReadHeader() {
        if (setjmp(png_jmpbuf(m_png)))
            return false;
        png_set_read_fn(m_png, &m_rest, TakeBytes);
        png_set_chunk_malloc_max(m_png, mostChunkBytes);
        png_set_user_limits(m_png, PNG_UINT_31_MAX, PNG_UINT_31_MAX); // the caller's limit has a message of its own
        png_read_info(m_png, m_info);
        m_width = png_get_image_width(m_png, m_info);
        m_height = png_get_image_height(m_png, m_info);
        m_pixelBytes = std::uint64_t{png_get_rowbytes(m_png, m_info)} * m_height;
        return true;
    }

    [[nodiscard]] bool Prepare() {
        if (setjmp(png_jmpbuf(m_png)))
            return false;
        png_set_expand(m_png);
        png_set_scale_16(m_png);
        png_set_gray_to_rgb(m_png);
        m_passes = png_set_interlace_handling(m_png);
        png_read_update_info(m_png, m_info);
        m_rowBytes = png_get_rowbytes(m_png, m_info);
        m_picture.channels = png_get_channels(m_png, m_info);
        return m_picture.channels == 3 || m_picture.channels == 4;
    }

    [[nodiscard]] bool ReadRows() {
        if (setjmp(png_jmpbuf(m_png)))
            return false;
        for (int pass = 0; pass < m_passes; ++pass)
            for (std::size_t row = 0; row < m_height; ++row)
                png_read_row(m_png, m_picture.bytes.data() + row * m_rowBytes, nullptr);
        png_read_end(m_png, nullptr);
        return true;
    }

    const std::uint64_t m_fileBytes;
    std::span<const std::uint8_t> m_rest;
    CReadPng& m_picture;
    png_structp m_png;
    png_infop m_info;
    std::uint32_t m_width = 0;
    std::uint32_t m_height = 0;
    std::uint64_t m_pixelBytes = 0; ///< as the file has them, before they are widened
    std::size_t m_rowBytes = 0;     ///< as they are handed out
    int m_passes = 1;
};

} // namespace

PngResult ReadPng(std::span<const std::uint8_t> file, int largestSide, CReadPng& picture) {
    picture = {};
    const PngResult result = CPngDecoder(file, picture).Decode(largestSide);
    if (result != PngResult::Done)
        picture = {};
    return result;
}

} // namespace velmor
