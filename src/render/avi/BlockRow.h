#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace velmor {

/// A colour of 5 bits a channel as Microsoft Video 1 stores it: red in bits 10 to 14, then green, then blue.
using Word = std::uint16_t;

/// The blocks of 4 x 4 pixels that stand side by side in a frame. Vectors are as wide as the processor has them:
/// behind the last block there is room for the rest of one, and what stands there is without meaning.
struct CBlockRow {
    /// Blocks that a vector may reach behind the last.
    static constexpr std::size_t slack = 32;
    static constexpr std::size_t pixelSlack = 4 * slack;

    /// One row of pixels, lowest row first.
    struct CPixels {
        /// Blue, green, red: of each block its four pixels of 8 bits, the leftmost lowest.
        std::array<std::vector<std::uint32_t>, 3> channels;
        /// Each pixel in 5 bits a channel.
        std::vector<Word> words;
    };

    explicit CBlockRow(std::size_t blocks) : blockCount(blocks) {
        for (CPixels& row : rows) {
            for (std::vector<std::uint32_t>& channel : row.channels)
                channel.resize(blocks + slack);
            row.words.resize(4 * (blocks + slack));
        }
    }

    std::size_t blockCount;
    std::array<CPixels, 4> rows;
};

/// Some blocks of a row, by number. Behind the last one there is room for a vector of numbers, all of blocks that
/// exist.
class CBlockList {
public:
    explicit CBlockList(std::size_t mostBlocks) : m_numbers(mostBlocks + CBlockRow::slack) {}

    void Clear() { m_count = 0; }
    void Add(std::size_t block) { m_numbers[m_count++] = static_cast<std::int32_t>(block); }
    std::span<const std::int32_t> Numbers() const { return std::span(m_numbers).first(m_count); }

private:
    std::vector<std::int32_t> m_numbers;
    std::size_t m_count = 0;
};

} // namespace velmor
