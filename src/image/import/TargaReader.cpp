// Uncompressed true-colour Targa files (Truevision TGA file format, version 2.0, 1991); 8-bit pixels are taken as
// grey levels.

#include "image/import/ImageReaders.h"
#include "image/import/RowSource.h"

#include <optional>

namespace velmor {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::size_t headerSize = 18;
constexpr int trueColor = 2;
constexpr int topRowFirst = 32;
constexpr int smallestSide = 2;
constexpr int largestSide = 15000;

CStatus Refused(const std::string& name, const std::string& reason) {
    return CStatus::Failure("Error : " + name + reason);
}

class CTargaRows : public CRowSource {
public:
    CStatus Open(Bytes file, const std::string& name);

    CSize Size() const override { return m_size; }
    bool ReadRow(std::span<CColor> row) override;

private:
    CStatus CheckHeader(Bytes header, const std::string& name);

    CSize m_size;
    std::size_t m_pixelSize = 0;
    bool m_topRowFirst = false;
    int m_nextRow = 0;
    Bytes m_pixels;
};

CStatus CTargaRows::CheckHeader(Bytes header, const std::string& name) {
    if (header[1] == 1)
        return Refused(name, " has palettes in it, paletted targa is not supported!");
    if (header[2] != trueColor)
        return Refused(name, " is compressed targa, can not read compressed targa, sorry!");
    const int bits = header[16];
    if (bits != 8 && bits != 24 && bits != 32)
        return CStatus::Failure("Unsupported Targa Error : " + name + " is not 24 bit or 8 bit or 32 bit!");
    m_pixelSize = static_cast<std::size_t>(bits / 8);
    m_size = {header[12] | header[13] << 8, header[14] | header[15] << 8};
    if (m_size.width < smallestSide || m_size.width > largestSide || m_size.height < smallestSide ||
        m_size.height > largestSide)
        return CStatus::Failure("Invalid image dimensions in: " + name);
    m_topRowFirst = (header[17] & topRowFirst) != 0;
    return {};
}

CStatus CTargaRows::Open(Bytes file, const std::string& name) {
    if (file.size() < headerSize)
        return CStatus::Failure("Unexpected end of file: " + name);
    const Bytes header = file.first(headerSize);
    const std::size_t identificationSize = header[0];
    if (file.size() - headerSize < identificationSize)
        return Refused(name, " is corrupted!");
    if (CStatus checked = CheckHeader(header, name); !checked)
        return checked;
    m_pixels = file.subspan(headerSize + identificationSize);
    if (m_pixels.size() <
        static_cast<std::size_t>(m_size.width) * static_cast<std::size_t>(m_size.height) * m_pixelSize)
        return Refused(name, " is corrupted!");
    return {};
}

bool CTargaRows::ReadRow(std::span<CColor> row) {
    const int stored = m_topRowFirst ? m_size.height - 1 - m_nextRow : m_nextRow;
    ++m_nextRow;
    const std::uint8_t* pixel = m_pixels.data() + static_cast<std::size_t>(stored) * row.size() * m_pixelSize;
    for (CColor& color : row) {
        if (m_pixelSize == 1)
            color = {pixel[0], pixel[0], pixel[0], 255};
        else
            color = {pixel[0], pixel[1], pixel[2], m_pixelSize == 4 ? pixel[3] : std::uint8_t{255}};
        pixel += m_pixelSize;
    }
    return true;
}

CStatus ReadTarga(CCelImg& image, const Path& path, ImportKind kind, int threshold, const std::string& name) {
    const Path source = path; // it may be the image's own path, which Clear() empties
    image.Clear();
    const std::optional<CFileBytes> file = ReadWholeFile(source);
    if (!file)
        return CStatus::Failure("Unable to open file" + name);
    CTargaRows rows;
    if (CStatus opened = rows.Open(file->Span(), name); !opened)
        return opened;
    return ImportRows(image, rows, kind, threshold, source, "Error : " + name + " is corrupted!");
}

} // namespace

CStatus ReadTargaPicture(CCelImg& image, const Path& path, const std::string& name) {
    return ReadTarga(image, path, ImportKind::Picture, 0, name);
}

CStatus ReadTargaCel(CCelImg& image, const Path& path, int threshold, const std::string& name) {
    return ReadTarga(image, path, ImportKind::Cel, threshold, name);
}

} // namespace velmor
