#include "render/avi/MsVideo1.h"

#include "render/avi/BlockFit.h"
#include "render/avi/ColorReduction.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <initializer_list>

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

CTolerances TolerancesOf(int quality) {
    const float loss = 1.0f - static_cast<float>(std::clamp(quality, 0, bestMsVideo1Quality)) /
                                  static_cast<float>(bestMsVideo1Quality);
    const float distance = 48 * loss * loss; // of a pixel, root mean square, in levels
    const float twoColors = 256 * distance * distance;
    return {twoColors / 16, twoColors};
}

// What stands for a block in the stream.
class CBlockCode {
public:
    static constexpr std::size_t mostWords = 9;

    void SetOneColor(Word color) {
        const bool wouldSkip = (color & 0x7c00) == 0x0400;
        if (wouldSkip)
            SetTwoColors(1, color, color);
        else
            Set({static_cast<Word>(color | marked)});
    }

    void SetTwoColors(Word flags, Word first, Word second) { Set({flags, first, second}); }

    void SetEightColors(const CEightColors& fit) {
        m_words[0] = fit.flags;
        std::ranges::copy(fit.colors, m_words.begin() + 1);
        m_words[1] |= marked;
        m_count = mostWords;
    }

    /// Writes mostWords, and returns how many bytes of them count.
    std::size_t Put(std::uint8_t* bytes) const {
        static_assert(std::endian::native == std::endian::little);
        std::memcpy(bytes, m_words.data(), sizeof m_words);
        return m_count * sizeof(Word);
    }

private:
    void Set(std::initializer_list<Word> words) {
        std::ranges::copy(words, m_words.begin());
        m_count = words.size();
    }

    std::array<Word, mostWords> m_words{};
    std::size_t m_count = 0;
};

class CFrameEncoder {
public:
    CFrameEncoder(std::span<const std::uint8_t> frame, int width, int height, int quality, ColorRef background)
        : m_frame(frame),
          m_width(static_cast<std::size_t>(width)),
          m_codedWidth(static_cast<std::size_t>(CodedWidthOf(width))),
          m_rowsBelow(CodedHeightOf(height) - height),
          m_background(background),
          m_tolerances(TolerancesOf(quality)),
          m_completed((m_codedWidth + CBlockRow::pixelSlack) * 3),
          m_row(m_codedWidth / 4),
          m_wordColors(m_row.blockCount),
          m_manyColored(m_row.blockCount),
          m_eightColored(m_row.blockCount),
          m_fewColors(m_row.blockCount + CBlockRow::slack),
          m_eightColors(m_fewColors.size()),
          m_codes(m_row.blockCount),
          m_bytes(m_row.blockCount * CBlockCode::mostWords * sizeof(Word)) {}

    /// The bytes of the row of blocks whose lowest row of pixels is `codedRow`; valid until the next call.
    std::span<const std::uint8_t> EncodeRow(int codedRow) {
        TakeRows(codedRow);
        EncodeFlatBlocks();
        EncodeManyColors();
        std::size_t used = 0;
        for (const CBlockCode& code : m_codes)
            used += code.Put(m_bytes.data() + used);
        return std::span(m_bytes).first(used);
    }

private:
    void TakeRows(int codedRow) {
        for (std::size_t i = 0; i < 4; ++i) {
            const int row = codedRow + static_cast<int>(i) - m_rowsBelow;
            const bool canBeTaken = row >= 0 && m_width == m_codedWidth && HasSlack(row);
            SplitPixels(canBeTaken ? RowOfFrame(row) : CompletedRow(row), m_row.rows[i], m_codedWidth);
        }
    }

    // Whether the frame goes on behind the row.
    bool HasSlack(int row) const {
        const std::size_t end = (static_cast<std::size_t>(row) + 1) * m_width * 3;
        return end + CBlockRow::pixelSlack * 3 <= m_frame.size();
    }

    const std::uint8_t* RowOfFrame(int row) const {
        return m_frame.data() + static_cast<std::size_t>(row) * m_width * 3;
    }

    // A row that the frame has only in part or not at all, or that is its last.
    const std::uint8_t* CompletedRow(int row) {
        const std::size_t present = row < 0 ? 0 : m_width;
        if (present > 0)
            std::copy_n(RowOfFrame(row), present * 3, m_completed.begin());
        for (std::size_t x = present; x < m_codedWidth; ++x) {
            m_completed[3 * x] = BlueOf(m_background);
            m_completed[3 * x + 1] = GreenOf(m_background);
            m_completed[3 * x + 2] = RedOf(m_background);
        }
        return m_completed.data();
    }

    // The blocks that come out with each pixel's own word.
    void EncodeFlatBlocks() {
        FindWordColors(m_row, m_wordColors);
        m_manyColored.Clear();
        for (std::size_t block = 0; block < m_row.blockCount; ++block) {
            if (m_wordColors.counts[block] == 1)
                m_codes[block].SetOneColor(m_wordColors.second[block]);
            else if (m_wordColors.counts[block] == 2)
                m_codes[block].SetTwoColors(m_wordColors.flags[block], m_wordColors.first[block],
                                            m_wordColors.second[block]);
            else
                m_manyColored.Add(block);
        }
    }

    void EncodeManyColors() {
        const bool isLossy = m_tolerances.twoColors > 0;
        if (isLossy)
            EncodeFewColors();
        const auto blocks = (isLossy ? m_eightColored : m_manyColored).Numbers();
        FitEightColors(m_row, blocks, m_eightColors);
        for (std::size_t i = 0; i < blocks.size(); ++i)
            m_codes[static_cast<std::size_t>(blocks[i])].SetEightColors(m_eightColors[i]);
    }

    // Of the blocks of many colours those that one or two can stand for.
    void EncodeFewColors() {
        const auto blocks = m_manyColored.Numbers();
        FitFewColors(m_row, blocks, m_tolerances, m_fewColors);
        m_eightColored.Clear();
        for (std::size_t i = 0; i < blocks.size(); ++i) {
            const auto block = static_cast<std::size_t>(blocks[i]);
            const CFewColors& fit = m_fewColors[i];
            if (!fit.isClose)
                m_eightColored.Add(block);
            else if (fit.isOne)
                m_codes[block].SetOneColor(fit.second);
            else
                m_codes[block].SetTwoColors(fit.flags, fit.first, fit.second);
        }
    }

    std::span<const std::uint8_t> m_frame;
    std::size_t m_width;
    std::size_t m_codedWidth;
    int m_rowsBelow; ///< coded rows below the frame's bottom row
    ColorRef m_background;
    CTolerances m_tolerances;
    std::vector<std::uint8_t> m_completed;
    CBlockRow m_row;
    CWordColors m_wordColors;
    CBlockList m_manyColored;
    CBlockList m_eightColored;
    std::vector<CFewColors> m_fewColors;     ///< of m_manyColored
    std::vector<CEightColors> m_eightColors; ///< of the blocks of many colours, or of m_eightColored
    std::vector<CBlockCode> m_codes;
    std::vector<std::uint8_t> m_bytes; ///< room for one row of blocks
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
