#include "render/avi/MsVideo1.h"

#include "render/avi/BlockFit.h"
#include "render/avi/WideRegisters.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

// Microsoft Video 1 with 16 bits a pixel, as the MultimediaWiki describes the stream. A frame is a row of 4 x 4
// blocks after the other, the lowest row first, each block one of
//     color | 8000                           one colour
//     flags, first, second                   two colours
//     flags, first | 8000, second, ...       two colours a quarter
// in 16-bit little-endian words; the flags stay below 8000. A word from 8400 to 87ff, which could also be a single
// colour, skips blocks instead; nothing is skipped here, and these colours take the second form.

namespace velmor {

namespace {

constexpr Word marked = 0x8000;
constexpr std::size_t mostBlockBytes = 18;

constexpr int FiveBitsOf(int value) {
    return (value * 249 + 1014) >> 11;
}

constexpr bool RoundsToNearest() {
    for (int value = 0; value < 256; ++value)
        if (FiveBitsOf(value) != (value * 31 * 2 + 255) / 510)
            return false;
    return true;
}
static_assert(RoundsToNearest());

VELMOR_FOR_WIDE_REGISTERS void ReduceColors(const std::uint8_t* pixels, std::size_t count, Word* words) {
    for (std::size_t x = 0; x < count; ++x)
        words[x] = static_cast<Word>(FiveBitsOf(pixels[3 * x + 2]) << 10 | FiveBitsOf(pixels[3 * x + 1]) << 5 |
                                     FiveBitsOf(pixels[3 * x]));
}

// How far a block's colours may be off, to be stored as one or as two.
struct CTolerances {
    explicit CTolerances(int quality) {
        const float loss = 1.0f - static_cast<float>(std::clamp(quality, 0, bestMsVideo1Quality)) /
                                      static_cast<float>(bestMsVideo1Quality);
        const float distance = 48 * loss * loss; // of a pixel, root mean square, in levels
        twoColors = 256 * distance * distance;
        oneColor = twoColors / 16;
    }

    float oneColor = 0;
    float twoColors = 0; ///< in the scale of CTwoColors::error
};

using BlockWords = std::array<Word, 16>;

bool IsUniform(const BlockWords& words) {
    std::array<std::uint64_t, 4> rows{};
    std::memcpy(rows.data(), words.data(), sizeof rows);
    const std::uint64_t first = words[0] * 0x0001'0001'0001'0001u;
    return ((rows[0] ^ first) | (rows[1] ^ first) | (rows[2] ^ first) | (rows[3] ^ first)) == 0;
}

constexpr BlockWords pixelBits = [] {
    BlockWords bits{};
    for (std::size_t i = 0; i < bits.size(); ++i)
        bits[i] = static_cast<Word>(1 << i);
    return bits;
}();

// The bits of the pixels that have the colour.
Word PixelsOf(const BlockWords& words, Word color) {
    Word bits = 0;
    for (std::size_t i = 0; i < words.size(); ++i)
        bits = static_cast<Word>(bits | (words[i] == color ? pixelBits[i] : 0));
    return bits;
}

class CFrameEncoder {
public:
    CFrameEncoder(std::span<const std::uint8_t> frame, int width, int height, int quality, ColorRef background)
        : m_frame(frame),
          m_width(static_cast<std::size_t>(width)),
          m_codedWidth(static_cast<std::size_t>(CodedWidthOf(width))),
          m_rowsBelow(CodedHeightOf(height) - height),
          m_background(background),
          m_tolerances(quality),
          m_bytes(m_codedWidth / 4 * mostBlockBytes) {
        for (std::size_t row = 0; row < 4; ++row)
            m_words[row].resize(m_codedWidth);
    }

    /// The bytes of the row of blocks whose lowest row of pixels is `codedRow`; valid until the next call.
    std::span<const std::uint8_t> EncodeRow(int codedRow) {
        m_used = 0;
        TakeRows(codedRow);
        for (std::size_t x = 0; x < m_codedWidth; x += 4)
            EncodeBlock(x);
        return std::span(m_bytes).first(m_used);
    }

private:
    void TakeRows(int codedRow) {
        for (std::size_t i = 0; i < 4; ++i) {
            const int row = codedRow + static_cast<int>(i) - m_rowsBelow;
            m_rows[i] = row >= 0 && m_width == m_codedWidth ? RowOfFrame(row) : CompletedRow(i, row);
            ReduceColors(m_rows[i], m_codedWidth, m_words[i].data());
        }
    }

    const std::uint8_t* RowOfFrame(int row) const {
        return m_frame.data() + static_cast<std::size_t>(row) * m_width * 3;
    }

    // A row that the frame has only in part or not at all.
    const std::uint8_t* CompletedRow(std::size_t i, int row) {
        std::vector<std::uint8_t>& pixels = m_completed[i];
        pixels.resize(m_codedWidth * 3);
        const std::size_t present = row < 0 ? 0 : m_width;
        if (present > 0)
            std::copy_n(RowOfFrame(row), present * 3, pixels.begin());
        for (std::size_t x = present; x < m_codedWidth; ++x) {
            pixels[3 * x] = BlueOf(m_background);
            pixels[3 * x + 1] = GreenOf(m_background);
            pixels[3 * x + 2] = RedOf(m_background);
        }
        return pixels.data();
    }

    void EncodeBlock(std::size_t x) {
        BlockWords words;
        for (std::size_t row = 0; row < 4; ++row)
            std::memcpy(&words[row * 4], &m_words[row][x], 4 * sizeof(Word));
        if (IsUniform(words))
            PutOneColor(words[0]);
        else if (!PutExactTwoColors(words))
            EncodeManyColors(x);
    }

    bool PutExactTwoColors(const BlockWords& words) {
        const Word second = words.back();
        const Word others = static_cast<Word>(~PixelsOf(words, second));
        const Word first = words[static_cast<std::size_t>(std::countr_zero(others))];
        if (PixelsOf(words, first) != others)
            return false;
        PutTwoColors(others, first, second);
        return true;
    }

    void EncodeManyColors(std::size_t x) {
        const CBlockPixels pixels = PixelsAt(x);
        if (m_tolerances.twoColors > 0) {
            const CBlockStatistics statistics = MeasureBlock(pixels);
            if (static_cast<float>(statistics.ErrorOfOneColor()) <= m_tolerances.oneColor)
                return PutOneColor(FitOneColor(statistics));
            if (statistics.LeastErrorOfTwoColors() <= m_tolerances.twoColors) {
                const CTwoColors fit = FitTwoColors(pixels, statistics);
                if (fit.error <= m_tolerances.twoColors)
                    return PutTwoColors(fit.flags, fit.first, fit.second);
            }
        }
        PutEightColors(FitEightColors(pixels));
    }

    CBlockPixels PixelsAt(std::size_t x) const {
        CBlockPixels pixels;
        for (int row = 0; row < 4; ++row)
            for (int column = 0; column < 4; ++column) {
                const auto index = static_cast<std::size_t>(BlockIndexOf(column, row));
                const std::uint8_t* pixel =
                    m_rows[static_cast<std::size_t>(row)] + 3 * (x + static_cast<std::size_t>(column));
                pixels.blue[index] = pixel[0];
                pixels.green[index] = pixel[1];
                pixels.red[index] = pixel[2];
            }
        return pixels;
    }

    void PutOneColor(Word color) {
        const bool wouldSkip = (color & 0x7c00) == 0x0400;
        if (wouldSkip)
            PutTwoColors(1, color, color);
        else
            Put(color | marked);
    }

    void PutTwoColors(int flags, Word first, Word second) {
        Put(flags);
        Put(first);
        Put(second);
    }

    void PutEightColors(const CEightColors& fit) {
        Put(fit.flags);
        Put(fit.colors[0] | marked);
        for (std::size_t i = 1; i < fit.colors.size(); ++i)
            Put(fit.colors[i]);
    }

    void Put(int word) {
        m_bytes[m_used] = static_cast<std::uint8_t>(word);
        m_bytes[m_used + 1] = static_cast<std::uint8_t>(word >> 8);
        m_used += 2;
    }

    std::span<const std::uint8_t> m_frame;
    std::size_t m_width;
    std::size_t m_codedWidth;
    int m_rowsBelow; ///< coded rows below the frame's bottom row
    ColorRef m_background;
    CTolerances m_tolerances;
    std::array<const std::uint8_t*, 4> m_rows{};
    std::array<std::vector<std::uint8_t>, 4> m_completed;
    std::array<std::vector<Word>, 4> m_words;
    std::vector<std::uint8_t> m_bytes; ///< room for one row of blocks
    std::size_t m_used = 0;
};

} // namespace

void EncodeMsVideo1(std::span<const std::uint8_t> frame, int width, int height, int quality, ColorRef background,
                    std::vector<std::uint8_t>& encoded) {
    encoded.clear();
    CFrameEncoder encoder(frame, width, height, quality, background);
    for (int row = 0; row < CodedHeightOf(height); row += 4) {
        const std::span<const std::uint8_t> bytes = encoder.EncodeRow(row);
        encoded.insert(encoded.end(), bytes.begin(), bytes.end());
    }
}

} // namespace velmor
