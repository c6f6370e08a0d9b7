#include "image/select/PieceLines.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace velmor {

namespace {

// Each pair of pixels that touch is met once.
constexpr std::array<CPoint, 4> neighbours{{{1, 0}, {-1, 1}, {0, 1}, {1, 1}}};

/// Knows for every line pixel of a piece one pixel that stands for it in the result.
class CLineJoiner {
public:
    CLineJoiner(const CPiece& piece, const CPieceMap& map, CPiece& placed)
        : m_piece(piece), m_map(map), m_placed(placed), m_stands(piece.pixels.size(), CPoint{-1, -1}) {}

    void Run() {
        NoteSampled();
        ForEachLine([this](int x, int y) { AddLost(x, y); });
        ForEachLine([this](int x, int y) {
            for (const CPoint step : neighbours)
                if (IsLine(x + step.x, y + step.y))
                    Join(x, y, StandsFor(x, y), StandsFor(x + step.x, y + step.y));
        });
    }

private:
    bool IsLine(int x, int y) const {
        return x >= 0 && y >= 0 && x < m_piece.Width() && y < m_piece.Height() &&
               m_piece.At(x, y) == PiecePixel::Line;
    }
    CPoint& StandsFor(int x, int y) { return m_stands[m_piece.IndexOf(x, y)]; }

    template<class Visit>
    void ForEachLine(Visit visit) {
        for (int y = 0; y < m_piece.Height(); ++y)
            for (int x = 0; x < m_piece.Width(); ++x)
                if (m_piece.At(x, y) == PiecePixel::Line)
                    visit(x, y);
    }

    void NoteSampled() {
        for (int y = 0; y < m_placed.Height(); ++y)
            for (int x = 0; x < m_placed.Width(); ++x)
                if (m_placed.At(x, y) == PiecePixel::Line) {
                    const CPoint from = SourceOf(m_piece, m_map, m_placed, x, y);
                    StandsFor(from.x, from.y) = {x, y};
                }
    }

    void AddLost(int x, int y) {
        CPoint& stands = StandsFor(x, y);
        if (stands.x >= 0)
            return;
        const CRealPoint at = m_map.ToImage({m_piece.place.x + x + 0.5, m_piece.place.y + y + 0.5});
        stands = {std::clamp(static_cast<int>(std::floor(at.x)) - m_placed.place.x, 0, m_placed.Width() - 1),
                  std::clamp(static_cast<int>(std::floor(at.y)) - m_placed.place.y, 0, m_placed.Height() - 1)};
        m_placed.Set(stands.x, stands.y, PiecePixel::Line, m_piece.ColorAt(x, y));
    }

    // The pixels between two, in the colour of a pixel of the piece.
    void Join(int x, int y, CPoint a, CPoint b) {
        const int steps = std::max(std::abs(b.x - a.x), std::abs(b.y - a.y));
        for (int step = 1; step < steps; ++step) {
            const CPoint at{a.x + static_cast<int>(std::lround(static_cast<double>((b.x - a.x) * step) / steps)),
                            a.y + static_cast<int>(std::lround(static_cast<double>((b.y - a.y) * step) / steps))};
            if (m_placed.At(at.x, at.y) != PiecePixel::Line)
                m_placed.Set(at.x, at.y, PiecePixel::Line, m_piece.ColorAt(x, y));
        }
    }

    const CPiece& m_piece;
    const CPieceMap& m_map;
    CPiece& m_placed;
    std::vector<CPoint> m_stands; ///< of each pixel of the piece; x is -1 where nothing does
};

} // namespace

void JoinLines(const CPiece& piece, const CPieceMap& map, CPiece& placed) {
    CLineJoiner(piece, map, placed).Run();
}

} // namespace velmor
