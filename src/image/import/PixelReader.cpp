// PNG and TIFF files, which come as whole pictures with alpha.

#include "image/import/ImageReaders.h"
#include "image/import/RowSource.h"
#include "platform/files/PngReader.h"
#include "platform/files/TiffReader.h"

#include <exception>
#include <optional>

namespace velmor {

namespace {

constexpr int smallestSide = 2;
constexpr int largestSide = 15000;
constexpr int opaque = 255;

/// Pixels of red green blue (alpha), top row first.
class CPixelRows : public CRowSource {
public:
    CPixelRows(CSize size, int channels, std::vector<std::uint8_t> pixels, ImportKind kind)
        : m_size(size), m_channels(static_cast<std::size_t>(channels)), m_pixels(std::move(pixels)), m_kind(kind) {}

    CSize Size() const override { return m_size; }

    bool ReadRow(std::span<CColor> row) override {
        --m_nextRow;
        const std::uint8_t* pixel =
            m_pixels.data() + static_cast<std::size_t>(m_size.height + m_nextRow) * row.size() * m_channels;
        for (CColor& color : row) {
            color = {pixel[2], pixel[1], pixel[0], m_channels == 4 ? pixel[3] : std::uint8_t{opaque}};
            if (m_kind == ImportKind::Cel)
                color = OnPaper(color);
            pixel += m_channels;
        }
        return true;
    }

private:
    // A drawing is looked at on white paper: what is transparent has a colour that nobody sees.
    static CColor OnPaper(const CColor& color) {
        const auto over = [&color](int value) {
            return static_cast<std::uint8_t>((value * color.alpha + opaque * (opaque - color.alpha)) / opaque);
        };
        return {over(color.blue), over(color.green), over(color.red), opaque};
    }

    CSize m_size;
    std::size_t m_channels;
    std::vector<std::uint8_t> m_pixels;
    ImportKind m_kind;
    int m_nextRow = 0; ///< counted down from the bottom row, -1
};

/// A picture as its library has read it.
struct CDecoded {
    CSize size;
    int channels = 4;
    std::vector<std::uint8_t> bytes;
    bool isTooLarge = false;
};

bool DecodePng(std::span<const std::uint8_t> file, CDecoded& decoded) {
    CReadPng png;
    const PngResult result = ReadPng(file, largestSide, png);
    decoded = {{png.width, png.height}, png.channels, std::move(png.bytes), result == PngResult::TooLarge};
    return result == PngResult::Done;
}

bool DecodeTiff(std::span<const std::uint8_t> file, CDecoded& decoded) {
    CReadTiff tiff;
    const TiffResult result = ReadTiff(file, largestSide, tiff);
    decoded = {{tiff.width, tiff.height}, 4, std::move(tiff.bytes), result == TiffResult::TooLarge};
    return result == TiffResult::Done;
}

using Decode = bool (*)(std::span<const std::uint8_t>, CDecoded&);

CStatus ReadPixels(CCelImg& image, const Path& path, ImportKind kind, int threshold, const std::string& name,
                   Decode decode) {
    const Path source = path; // it may be the image's own path, which Clear() empties
    image.Clear();
    try {
        const std::optional<CFileBytes> file = ReadWholeFile(source);
        if (!file)
            return CStatus::Failure("Unable to open file" + name);
        CDecoded decoded;
        const bool done = decode(file->Span(), decoded);
        if (decoded.isTooLarge ||
            (done && (decoded.size.width < smallestSide || decoded.size.height < smallestSide)))
            return CStatus::Failure("Invalid image dimensions in: " + name);
        if (!done)
            return CStatus::Failure("Error : " + name + " is corrupted!");
        CPixelRows rows(decoded.size, decoded.channels, std::move(decoded.bytes), kind);
        return ImportRows(image, rows, kind, threshold, source, "Error : " + name + " is corrupted!");
    } catch (const std::exception&) {
        return CStatus::Failure("Unable to allocate memory for cel!");
    }
}

} // namespace

CStatus ReadPngPicture(CCelImg& image, const Path& path, const std::string& name) {
    return ReadPixels(image, path, ImportKind::Picture, 0, name, DecodePng);
}

CStatus ReadPngCel(CCelImg& image, const Path& path, int threshold, const std::string& name) {
    return ReadPixels(image, path, ImportKind::Cel, threshold, name, DecodePng);
}

CStatus ReadTiffPicture(CCelImg& image, const Path& path, const std::string& name) {
    return ReadPixels(image, path, ImportKind::Picture, 0, name, DecodeTiff);
}

CStatus ReadTiffCel(CCelImg& image, const Path& path, int threshold, const std::string& name) {
    return ReadPixels(image, path, ImportKind::Cel, threshold, name, DecodeTiff);
}

} // namespace velmor
