#include "image/import/DibDecoder.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace velmor {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::size_t headerSize = 40;
constexpr std::size_t masksSize = 12;
constexpr std::size_t tableEntrySize = 4;

// Values of the header's compression field.
constexpr std::uint32_t uncompressed = 0;
constexpr std::uint32_t runs8 = 1;
constexpr std::uint32_t runs4 = 2;
constexpr std::uint32_t bitFields = 3;

/// A run-length coded bitmap can be far larger than its bytes, because rows may be skipped. Beyond this many pixels
/// it must hold as many runs as drawing all of them takes.
constexpr std::size_t mostSkippedPixels = std::size_t{1} << 24;
constexpr std::size_t longestRun = 255;

std::uint32_t Read32(Bytes bytes, std::size_t at) {
    return bytes[at] | static_cast<std::uint32_t>(bytes[at + 1]) << 8 |
           static_cast<std::uint32_t>(bytes[at + 2]) << 16 | static_cast<std::uint32_t>(bytes[at + 3]) << 24;
}

std::size_t HeaderSizeOf(Bytes info) {
    return std::max<std::size_t>(Read32(info, 0), headerSize);
}

// Entries of the colour table that the bitmap itself declares; 0 in the header stands for all.
std::size_t TableLengthOf(Bytes info, int bitsPerPixel) {
    const std::size_t declared = Read32(info, 32);
    if (bitsPerPixel > 8)
        return declared;
    const std::size_t all = std::size_t{1} << bitsPerPixel;
    return declared == 0 ? all : std::min(declared, all);
}

bool IsSupported(int bitsPerPixel, std::uint32_t compression) {
    switch (compression) {
    case uncompressed:
        return bitsPerPixel == 1 || bitsPerPixel == 4 || bitsPerPixel == 8 || bitsPerPixel == 16 ||
               bitsPerPixel == 24 || bitsPerPixel == 32;
    case runs8:
        return bitsPerPixel == 8;
    case runs4:
        return bitsPerPixel == 4;
    case bitFields:
        return bitsPerPixel == 16 || bitsPerPixel == 32;
    default:
        return false;
    }
}

// Rows are padded to a multiple of 4 bytes.
std::size_t StoredRowSize(int width, int bitsPerPixel) {
    return (static_cast<std::size_t>(width) * static_cast<std::size_t>(bitsPerPixel) + 31) / 32 * 4;
}

} // namespace

std::optional<CDibDecoder::CChannelMask> CDibDecoder::CChannelMask::Of(std::uint32_t mask) {
    const int shift = mask == 0 ? 0 : std::countr_zero(mask);
    const int bits = std::popcount(mask);
    if (mask >> shift != (std::uint64_t{1} << bits) - 1)
        return std::nullopt; // the bits of a channel stand together
    return CChannelMask{mask, shift, bits};
}

std::uint8_t CDibDecoder::CChannelMask::ValueIn(std::uint32_t pixel) const {
    const std::uint32_t value = (pixel & mask) >> shift;
    if (bits == 0 || bits >= 8)
        return static_cast<std::uint8_t>(bits == 0 ? 0 : value >> (bits - 8));
    // Repeating the bits maps 0 to 0 and the greatest value to 255.
    std::uint32_t widened = 0;
    for (int at = 8 - bits; at > -bits; at -= bits)
        widened |= at >= 0 ? value << at : value >> -at;
    return static_cast<std::uint8_t>(widened);
}

DibResult CDibDecoder::Open(Bytes info, Bytes bits, CDibDecoder& decoder) {
    decoder = CDibDecoder{};
    if (const DibResult read = decoder.ReadFormat(info, RowOrder::BottomFirst); read != DibResult::Done)
        return read;
    decoder.m_bits = bits;
    return decoder.CheckBits();
}

DibResult CDibDecoder::OpenPacked(Bytes bitmap, CDibDecoder& decoder) {
    decoder = CDibDecoder{};
    if (const DibResult read = decoder.ReadFormat(bitmap, RowOrder::Either); read != DibResult::Done)
        return read;
    const bool masksFollow = decoder.m_compression == bitFields && HeaderSizeOf(bitmap) == headerSize;
    const std::size_t bitsAt = HeaderSizeOf(bitmap) + (masksFollow ? masksSize : 0) +
                               TableLengthOf(bitmap, decoder.m_bitsPerPixel) * tableEntrySize;
    if (bitsAt > bitmap.size())
        return DibResult::Truncated;
    decoder.m_bits = bitmap.subspan(bitsAt);
    return decoder.CheckBits();
}

DibResult CDibDecoder::ReadFormat(Bytes info, RowOrder allowed) {
    if (info.size() < headerSize)
        return DibResult::Truncated;
    const auto width = static_cast<std::int32_t>(Read32(info, 4));
    auto height = static_cast<std::int32_t>(Read32(info, 8));
    m_topRowFirst = allowed == RowOrder::Either && height < 0 && height >= -largestSide;
    if (m_topRowFirst)
        height = -height;
    if (width < 1 || width > largestSide || height < 1 || height > largestSide)
        return DibResult::InvalidSize;
    m_size = {width, height};
    m_bitsPerPixel = info[14] | info[15] << 8;
    m_compression = Read32(info, 16);
    const bool isRunLengthCoded = m_compression == runs8 || m_compression == runs4;
    if (!IsSupported(m_bitsPerPixel, m_compression) || (isRunLengthCoded && m_topRowFirst))
        return DibResult::Unsupported;
    if (m_bitsPerPixel <= 8)
        ReadColorTable(info);
    else if (!ReadMasks(info))
        return DibResult::Unsupported;
    return DibResult::Done;
}

bool CDibDecoder::ReadMasks(Bytes info) {
    std::array<std::uint32_t, 3> masks{0x7c00, 0x3e0, 0x1f}; // of 16 bits; whole bytes need none
    if (m_compression == bitFields) {
        if (info.size() < headerSize + masksSize)
            return false;
        // Behind a header of 40 bytes and inside the longer ones they stand at the same place.
        for (std::size_t i = 0; i < masks.size(); ++i)
            masks[i] = Read32(info, headerSize + 4 * i);
    }
    for (std::size_t i = 0; i < masks.size(); ++i) {
        const std::optional<CChannelMask> mask = CChannelMask::Of(masks[i]);
        if (!mask)
            return false;
        m_masks[i] = *mask;
    }
    return true;
}

void CDibDecoder::ReadColorTable(Bytes info) {
    Bytes table = info.subspan(std::min(HeaderSizeOf(info), info.size()));
    const std::size_t length = TableLengthOf(info, m_bitsPerPixel);
    for (std::size_t i = 0; i < length && table.size() >= 3; ++i) {
        m_colors[i] = {table[0], table[1], table[2], 255};
        table = table.subspan(std::min(tableEntrySize, table.size()));
    }
}

DibResult CDibDecoder::CheckBits() const {
    const auto width = static_cast<std::size_t>(m_size.width);
    const auto height = static_cast<std::size_t>(m_size.height);
    if (m_compression == runs8 || m_compression == runs4) {
        const std::size_t pixels = width * height;
        const bool enough = pixels <= mostSkippedPixels || m_bits.size() / 2 >= pixels / longestRun;
        return enough ? DibResult::Done : DibResult::Truncated;
    }
    // Some writers leave out the padding of the last row.
    const std::size_t lastRow = (width * static_cast<std::size_t>(m_bitsPerPixel) + 7) / 8;
    const std::size_t needed = (height - 1) * StoredRowSize(m_size.width, m_bitsPerPixel) + lastRow;
    return m_bits.size() >= needed ? DibResult::Done : DibResult::Truncated;
}

bool CDibDecoder::ReadRow(std::span<CColor> row) {
    if (m_compression == runs8 || m_compression == runs4)
        return ReadRunsRow(row);
    if (m_rowsRead >= m_size.height)
        return false;
    const int storedRow = m_topRowFirst ? m_size.height - 1 - m_rowsRead : m_rowsRead;
    ++m_rowsRead;
    const Bytes stored =
        m_bits.subspan(static_cast<std::size_t>(storedRow) * StoredRowSize(m_size.width, m_bitsPerPixel));
    if (m_bitsPerPixel <= 8)
        ReadIndexedRow(stored, row);
    else if (m_bitsPerPixel >= 24 && m_compression == uncompressed)
        ReadBytesRow(stored, row);
    else
        ReadMaskedRow(stored, row);
    return true;
}

void CDibDecoder::ReadIndexedRow(Bytes stored, std::span<CColor> row) const {
    const auto bits = static_cast<std::size_t>(m_bitsPerPixel);
    const std::size_t indexMask = (std::size_t{1} << bits) - 1;
    for (std::size_t x = 0; x < row.size(); ++x) {
        const std::size_t bitAt = x * bits; // the leftmost pixel stands in the highest bits of a byte
        row[x] = m_colors[stored[bitAt / 8] >> (8 - bits - bitAt % 8) & indexMask];
    }
}

void CDibDecoder::ReadBytesRow(Bytes stored, std::span<CColor> row) const {
    const std::uint8_t* at = stored.data();
    for (CColor& color : row) {
        color = {at[0], at[1], at[2], 255};
        at += m_bitsPerPixel / 8;
    }
}

void CDibDecoder::ReadMaskedRow(Bytes stored, std::span<CColor> row) const {
    const auto pixelSize = static_cast<std::size_t>(m_bitsPerPixel) / 8;
    const std::uint8_t* at = stored.data();
    for (CColor& color : row) {
        std::uint32_t pixel = 0;
        for (std::size_t i = 0; i < pixelSize; ++i)
            pixel |= static_cast<std::uint32_t>(at[i]) << 8 * i;
        color = {m_masks[2].ValueIn(pixel), m_masks[1].ValueIn(pixel), m_masks[0].ValueIn(pixel), 255};
        at += pixelSize;
    }
}

void CDibDecoder::PutPixel(std::span<CColor> row, std::size_t index) {
    if (m_column < row.size()) // runs are cut at the end of the row
        row[m_column++] = m_colors[index];
}

// One row of the coding. Rows below a jump and all rows after the end of the bitmap stay black.
bool CDibDecoder::ReadRunsRow(std::span<CColor> row) {
    std::ranges::fill(row, CColor{});
    if (m_rowsToSkip > 0)
        --m_rowsToSkip;
    bool rowEnds = m_ended || m_rowsToSkip > 0;
    while (!rowEnds) {
        if (m_bits.size() - m_position < 2) {
            // The marks at the very end may be missing when every pixel is there.
            const bool complete = m_column >= row.size();
            m_column = 0;
            return complete;
        }
        const std::size_t count = m_bits[m_position];
        const std::size_t value = m_bits[m_position + 1];
        if (count == 0) {
            if (!ReadEscape(row, rowEnds))
                return false;
            continue;
        }
        m_position += 2;
        for (std::size_t i = 0; i < count; ++i)
            PutPixel(row, m_compression == runs8 ? value : i % 2 == 0 ? value >> 4 : value & 15);
    }
    return true;
}

// What follows a count of 0: end of row, end of bitmap, a jump right and up, or pixels one by one.
bool CDibDecoder::ReadEscape(std::span<CColor> row, bool& rowEnds) {
    const std::size_t code = m_bits[m_position + 1];
    m_position += 2;
    if (code > 2)
        return ReadAbsolute(code, row);
    if (code == 2) {
        if (m_bits.size() - m_position < 2)
            return false;
        m_column += m_bits[m_position];
        m_rowsToSkip = m_bits[m_position + 1];
        m_position += 2;
        rowEnds = m_rowsToSkip > 0;
        return true;
    }
    if (code == 0)
        m_column = 0;
    else
        m_ended = true;
    rowEnds = true;
    return true;
}

bool CDibDecoder::ReadAbsolute(std::size_t count, std::span<CColor> row) {
    const std::size_t size = m_compression == runs8 ? count : (count + 1) / 2;
    const Bytes values = m_bits.subspan(m_position);
    if (values.size() < size)
        return false;
    for (std::size_t i = 0; i < count; ++i)
        PutPixel(row, m_compression == runs8 ? values[i] : values[i / 2] >> (i % 2 == 0 ? 4 : 0) & 15);
    m_position += std::min(size + size % 2, values.size()); // padded to an even number of bytes
    return true;
}

} // namespace velmor
