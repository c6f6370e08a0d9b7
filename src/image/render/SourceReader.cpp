#include "image/render/SourceReader.h"

#include "image/CelFileFormat.h"
#include "image/RunLength.h"
#include "image/render/ImagePacker.h"

#include <algorithm>
#include <array>
#include <exception>
#include <fstream>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace velmor {

namespace {

using Bytes = std::span<const std::uint8_t>;

std::size_t SizeOf(int count) {
    return static_cast<std::size_t>(count);
}

/// The rows of a cel's run-length coded planes, which are walked side by side.
class CRunRows : public IImageRows {
public:
    explicit CRunRows(CSize size) : m_size(size), m_values(SizeOf(size.width) * m_channels.size()) {}

    /// Finds where in `coded`, which is kept, each plane begins. False when it ends before the last.
    bool FindPlanes(Bytes coded) {
        for (CRunReader& channel : m_channels) {
            channel = CRunReader(coded);
            CRunReader end = channel;
            if (!end.Skip(SizeOf(m_size.width) * SizeOf(m_size.height)))
                return false;
            coded = end.Rest();
        }
        return true;
    }

    CSize Size() const override { return m_size; }
    LoadState Kind() const override { return LoadState::Cel; }

    bool FindVisible(CVisibleArea& area) override {
        CRunReader alphas = m_channels[static_cast<std::size_t>(Channel::Alpha)];
        const std::span<std::uint8_t> row = ValuesOf(0);
        for (int y = 0; y < m_size.height; ++y) {
            if (!alphas.Read(row))
                return false;
            area.AddRow(y, row.data());
        }
        return true;
    }

    bool Read(int y, int firstColumn, int endColumn, CChannelRows& row) override {
        const std::size_t first = SizeOf(y) * SizeOf(m_size.width) + SizeOf(firstColumn);
        const std::size_t count = SizeOf(endColumn - firstColumn);
        for (std::size_t i = 0; i < m_channels.size(); ++i) {
            const std::span<std::uint8_t> values = ValuesOf(i);
            if (!m_channels[i].Skip(first - m_at) ||
                !m_channels[i].Read(values.subspan(SizeOf(firstColumn), count)))
                return false;
            row[i] = values.data();
        }
        m_at = first + count;
        return true;
    }

private:
    std::span<std::uint8_t> ValuesOf(std::size_t channel) {
        return std::span(m_values).subspan(channel * SizeOf(m_size.width), SizeOf(m_size.width));
    }

    CSize m_size;
    std::array<CRunReader, 4> m_channels; ///< each at pixel m_at
    std::size_t m_at = 0;
    std::vector<std::uint8_t> m_values; ///< a row of each channel
};

/// The rows of a picture's planes, read from its file some at a time.
class CPictureRows : public IImageRows {
public:
    /// `file` stands at the planes.
    CPictureRows(std::istream& file, const CCelFileHeader& header)
        : m_file(file),
          m_planes(file.tellg()),
          m_header(header),
          m_width(SizeOf(header.size.width)),
          m_bandRows(std::max(bandBytes / header.size.width, 1)),
          m_values(SizeOf(m_bandRows) * m_width * header.channels),
          m_opaque(header.channels == 3 ? m_width : 0, 255) {}

    CSize Size() const override { return m_header.size; }
    LoadState Kind() const override { return LoadState::Picture; }

    bool FindVisible(CVisibleArea& area) override {
        for (int y = 0; y < m_header.size.height; ++y) {
            if (!m_opaque.empty()) {
                area.AddRow(y, m_opaque.data());
                continue;
            }
            if (y % m_bandRows == 0 && !ReadBand(alpha, y))
                return false;
            area.AddRow(y, BandOf(alpha) + SizeOf(y % m_bandRows) * m_width);
        }
        return true;
    }

    bool Read(int y, int, int, CChannelRows& row) override {
        if (y >= m_endRow) {
            for (std::size_t channel = 0; channel < m_header.channels; ++channel)
                if (!ReadBand(channel, y))
                    return false;
            m_firstRow = y;
            m_endRow = y + m_bandRows;
        }
        for (std::size_t channel = 0; channel < row.size(); ++channel)
            row[channel] =
                channel < m_header.channels ? BandOf(channel) + SizeOf(y - m_firstRow) * m_width : m_opaque.data();
        return true;
    }

private:
    /// Of one channel: a read of this size takes little longer than its bytes do, and they stay in the processor's
    /// caches.
    static constexpr int bandBytes = 1 << 16;
    static constexpr auto alpha = static_cast<std::size_t>(Channel::Alpha);

    std::uint8_t* BandOf(std::size_t channel) { return m_values.data() + channel * SizeOf(m_bandRows) * m_width; }

    bool ReadBand(std::size_t channel, int firstRow) {
        const int rows = std::min(m_bandRows, m_header.size.height - firstRow);
        m_file.seekg(m_planes +
                     static_cast<std::streamoff>(channel * m_header.Pixels() + SizeOf(firstRow) * m_width));
        return ReadAll(m_file, {BandOf(channel), SizeOf(rows) * m_width});
    }

    std::istream& m_file;
    std::streamoff m_planes;
    CCelFileHeader m_header;
    std::size_t m_width;
    int m_bandRows;
    int m_firstRow = 0; ///< of the band that is there
    int m_endRow = 0;
    std::vector<std::uint8_t> m_values; ///< a band of each channel
    std::vector<std::uint8_t> m_opaque; ///< the alphas of a row, where the file has none
};

CStatus PackCel(std::istream& file, const CCelFileHeader& header, bool smooth, CImagePacker& packer) {
    CFileBytes bytes(header.bytesBehind);
    if (!ReadAll(file, bytes.Span()))
        return TruncatedFile(header.kind);
    const Bytes all = bytes.Span();
    std::optional<CLineMask> lines;
    if (smooth)
        lines = {all.first(header.MaskBytes()), header.size};
    CRunRows rows(header.size);
    const bool isWhole = rows.FindPlanes(all.subspan(header.MaskBytes())) && packer.Pack(rows, lines);
    return isWhole ? CStatus() : TruncatedFile(header.kind);
}

CStatus PackPicture(std::istream& file, const CCelFileHeader& header, CImagePacker& packer) {
    CPictureRows rows(file, header);
    return packer.Pack(rows, std::nullopt) ? CStatus() : TruncatedFile(header.kind);
}

CStatus ReadBlurred(const Path& path, const CRenderPreparation& preparation,
                    std::shared_ptr<const CRenderSource>& source) {
    CCelImg image;
    if (CStatus loaded = image.Load(path); !loaded)
        return loaded;
    source = std::make_shared<const CRenderSource>(std::move(image), preparation);
    return {};
}

CStatus Read(const Path& path, const CPlacement& placement, CRenderPreparation& preparation,
             std::shared_ptr<const CRenderSource>& source) {
    std::ifstream file;
    if (!OpenCelFile(path, file))
        return CStatus::Failure("Unable to open cel file for reading");
    CCelFileHeader header;
    if (CStatus read = ReadCelFileSizes(file, header); !read)
        return read;
    preparation = PreparationFor(placement, header.kind);
    if (preparation.blurX > 0 || preparation.blurY > 0)
        return ReadBlurred(path, preparation, source);
    if (CStatus read = ReadUpToPlanes(file, header); !read)
        return read;
    CImagePacker packer;
    CStatus packed = header.kind == LoadState::Cel ? PackCel(file, header, preparation.smooth, packer)
                                                   : PackPicture(file, header, packer);
    if (packed)
        source = std::make_shared<const CRenderSource>(std::move(packer));
    return packed;
}

} // namespace

CStatus ReadRenderSource(const Path& path, const CPlacement& placement, CRenderPreparation& preparation,
                         std::shared_ptr<const CRenderSource>& source) {
    try {
        return Read(path, placement, preparation, source);
    } catch (const std::exception&) {
        return CStatus::Failure("Unable to allocate memory for cel!");
    }
}

} // namespace velmor
