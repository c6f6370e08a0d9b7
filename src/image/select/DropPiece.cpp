#include "image/select/Piece.h"
#include "platform/process/Parallel.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <span>

namespace velmor {

namespace {

constexpr std::array channels{Channel::Red, Channel::Green, Channel::Blue, Channel::Alpha};
constexpr int rowsAtOnce = 32;
constexpr int lineBit = 1; ///< of the number of PiecePixel::Line alone

// A colour that covers another by its alpha, rounded. Exactly the upper one where it is opaque or nothing is under
// it.
CColor Over(CColor upper, CColor lower) {
    const int rest = lower.alpha * (255 - upper.alpha);
    const int sum = upper.alpha * 255 + rest; // 255 times the alpha that comes of it
    if (sum == 0)
        return upper.alpha == 0 ? lower : upper;
    const auto mix = [&](int a, int b) {
        return static_cast<std::uint8_t>((a * upper.alpha * 255 + b * rest + sum / 2) / sum);
    };
    return {mix(upper.blue, lower.blue), mix(upper.green, lower.green), mix(upper.red, lower.red),
            static_cast<std::uint8_t>((sum + 127) / 255)};
}

// One bit of each of eight bytes, that of the first one leftmost.
int BitsOf(const std::uint8_t* bytes, int bit = 0) {
    static_assert(std::endian::native == std::endian::little);
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return static_cast<int>((word >> bit & 0x0101010101010101) * 0x8040201008040201 >> 56);
}

/// Puts rows of a piece into an image. Rows are apart from each other, in the line mask as well.
class CDropping {
public:
    CDropping(CCelImg& image, const CPiece& piece, CPoint move, const CRect& part)
        : m_image(image),
          m_piece(piece),
          m_part(part),
          m_fromX(part.x - piece.place.x - move.x),
          m_fromY(part.y - piece.place.y - move.y),
          m_covered(static_cast<std::size_t>(part.endX - part.x) * static_cast<std::size_t>(part.endY - part.y)) {}

    void DropRow(int row) {
        if (m_image.GetLoadState() == LoadState::Picture || m_piece.isPicture)
            BlendRow(m_part.y + row, m_fromY + row);
        else
            CoverRow(row);
    }

private:
    int Width() const { return m_part.endX - m_part.x; }

    // A cel's piece onto a cel: pixels are replaced, many at a time.
    void CoverRow(int row) {
        const int y = m_part.y + row;
        const std::size_t from = m_piece.IndexOf(m_fromX, m_fromY + row);
        const PiecePixel* const pixels = m_piece.pixels.data() + from;
        const auto width = static_cast<std::size_t>(Width());
        const std::span<std::uint8_t> covered =
            std::span(m_covered).subspan(static_cast<std::size_t>(row) * width, width);
        FindCovered(y, pixels, covered);
        SetLines(y, pixels, covered);
        for (std::size_t plane = 0; plane < channels.size(); ++plane) {
            const std::uint8_t* const colors = m_piece.planes[plane].Span().data() + from;
            std::uint8_t* const to = m_image.PlaneOf(channels[plane]).data() + m_image.IndexOf(m_part.x, y);
            for (std::size_t x = 0; x < width; ++x)
                to[x] = static_cast<std::uint8_t>((colors[x] & covered[x]) | (to[x] & ~covered[x]));
        }
    }

    void FindCovered(int y, const PiecePixel* pixels, std::span<std::uint8_t> covered) {
        for (std::size_t x = 0; x < covered.size(); ++x) // without branches it is done on many pixels at a time
            covered[x] = pixels[x] != PiecePixel::Nothing ? 0xff : 0;
        if (m_piece.what != SelectWhat::Paint)
            return;
        for (int x = 0; x < Width(); ++x)
            if (m_image.IsLine(m_part.x + x, y))
                covered[static_cast<std::size_t>(x)] = 0;
    }

    // The mask's bytes, of eight pixels each, are changed once.
    void SetLines(int y, const PiecePixel* pixels, std::span<const std::uint8_t> covered) {
        std::uint8_t* const row = m_image.LineMask().data() +
                                  static_cast<std::size_t>(y) * static_cast<std::size_t>(m_image.StrideBits() / 8);
        for (int x = 0; x < Width();) {
            const int byte = (m_part.x + x) / 8;
            const int end = std::min((byte + 1) * 8 - m_part.x, Width());
            int clear = 0;
            int set = 0;
            if (end - x == 8) {
                clear = BitsOf(covered.data() + x);
                set = BitsOf(reinterpret_cast<const std::uint8_t*>(pixels + x), lineBit);
            } else {
                for (int i = x; i < end; ++i) {
                    const int bit = 0x80 >> (m_part.x + i) % 8;
                    clear |= covered[static_cast<std::size_t>(i)] & bit;
                    set |= pixels[i] == PiecePixel::Line ? bit : 0;
                }
            }
            row[byte] = static_cast<std::uint8_t>((row[byte] & ~clear) | set);
            x = end;
        }
    }

    void BlendRow(int y, int fromY) {
        for (int x = 0; x < Width(); ++x)
            if (m_piece.At(m_fromX + x, fromY) != PiecePixel::Nothing && !m_image.IsLine(m_part.x + x, y))
                m_image.SetColorAt(m_part.x + x, y,
                                   Over(m_piece.ColorAt(m_fromX + x, fromY), m_image.ColorAt(m_part.x + x, y)));
    }

    CCelImg& m_image;
    const CPiece& m_piece;
    CRect m_part; ///< of the image
    int m_fromX;  ///< of the piece
    int m_fromY;
    std::vector<std::uint8_t> m_covered; ///< all bits set for each pixel of the part that is replaced
};

} // namespace

CPaintResult Drop(CCelImg& image, const CPiece& piece, CPoint move) {
    const CRect place{piece.place.x + move.x, piece.place.y + move.y, piece.place.endX + move.x,
                      piece.place.endY + move.y};
    const CRect part = Intersection(place, {0, 0, image.Width(), image.Height()});
    if (part.IsEmpty())
        return {};
    return PaintWithMemory([&] {
        CDropping dropping(image, piece, move, part);
        ParallelFor(part.endY - part.y, rowsAtOnce, [&](int begin, int end) {
            for (int row = begin; row < end; ++row)
                dropping.DropRow(row);
        });
        image.SetModified(true);
        return part;
    });
}

} // namespace velmor
