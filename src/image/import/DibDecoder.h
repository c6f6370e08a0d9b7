#pragma once

#include "image/import/RowSource.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace velmor {

enum class DibResult {
    Done,
    Truncated,   ///< header or pixels end too early
    InvalidSize, ///< width or height not within 1 to CDibDecoder::largestSide (top-down bitmaps included)
    Unsupported, ///< bits per pixel or compression that no Windows display draws
};

/// Rows of a Windows device-independent bitmap, wherever it comes from: a ".bmp" file, a captured frame, a scan.
/// Formats and layout as Microsoft publishes them under "Bitmap Storage": 1, 4, 8, 16, 24 and 32 bits a pixel,
/// run-length coded at 4 and 8 bits, colour masks at 16 and 32. Alpha is always 255. Pixels that a run-length coded
/// bitmap skips, and colour indices without a table entry, are black.
///
/// The decoder keeps spans of the bytes that it is given; they must outlive it.
class CDibDecoder : public CRowSource {
public:
    static constexpr int largestSide = 15000;

    /// `info` starts with the information header, followed by masks or colour table, of which it need not hold all;
    /// a header length below 40 counts as 40. `bits` starts with the bottom row. Whatever the header says, no
    /// memory is taken for it.
    static DibResult Open(std::span<const std::uint8_t> info, std::span<const std::uint8_t> bits,
                          CDibDecoder& decoder);
    /// A bitmap in memory whose rows follow its colour table directly. A device may store the top row first and say
    /// so with a negative height, which is out of range in a file.
    static DibResult OpenPacked(std::span<const std::uint8_t> bitmap, CDibDecoder& decoder);

    CSize Size() const override { return m_size; }
    int BitsPerPixel() const { return m_bitsPerPixel; }
    /// Colours of the pixel values of a bitmap of up to 8 bits a pixel.
    std::span<const CColor> ColorTable() const { return m_colors; }
    [[nodiscard]] bool ReadRow(std::span<CColor> row) override;

private:
    /// One channel of a pixel of 16 or 32 bits, widened or cut to 8 bits.
    struct CChannelMask {
        std::uint32_t mask = 0;
        int shift = 0;
        int bits = 0;

        static std::optional<CChannelMask> Of(std::uint32_t mask);
        std::uint8_t ValueIn(std::uint32_t pixel) const;
    };

    enum class RowOrder { BottomFirst, Either };

    DibResult ReadFormat(std::span<const std::uint8_t> info, RowOrder allowed);
    [[nodiscard]] bool ReadMasks(std::span<const std::uint8_t> info);
    void ReadColorTable(std::span<const std::uint8_t> info);
    DibResult CheckBits() const;
    void ReadIndexedRow(std::span<const std::uint8_t> stored, std::span<CColor> row) const;
    void ReadBytesRow(std::span<const std::uint8_t> stored, std::span<CColor> row) const;
    void ReadMaskedRow(std::span<const std::uint8_t> stored, std::span<CColor> row) const;
    [[nodiscard]] bool ReadRunsRow(std::span<CColor> row);
    [[nodiscard]] bool ReadEscape(std::span<CColor> row, bool& rowEnds);
    [[nodiscard]] bool ReadAbsolute(std::size_t count, std::span<CColor> row);
    void PutPixel(std::span<CColor> row, std::size_t index);

    CSize m_size;
    int m_bitsPerPixel = 0;
    std::uint32_t m_compression = 0;
    std::array<CColor, 256> m_colors{};
    std::array<CChannelMask, 3> m_masks; ///< red, green, blue
    std::span<const std::uint8_t> m_bits;
    std::size_t m_position = 0; ///< of the next byte of a run-length coded bitmap
    int m_rowsRead = 0;
    bool m_topRowFirst = false;

    // Where the run-length coding stands.
    std::size_t m_column = 0;
    int m_rowsToSkip = 0;
    bool m_ended = false;
};

} // namespace velmor
