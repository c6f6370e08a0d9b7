#include "image/select/PieceTransform.h"

#include "image/select/PieceLines.h"
#include "platform/process/Parallel.h"

#include <array>
#include <cmath>

namespace velmor {

namespace {

constexpr int rowsAtOnce = 16;

bool IsInside(const CPiece& piece, CPoint at) {
    return at.x >= 0 && at.y >= 0 && at.x < piece.Width() && at.y < piece.Height();
}

void SampleNearest(const CPiece& piece, const CPieceMap& map, CPiece& placed, int y) {
    for (int x = 0; x < placed.Width(); ++x) {
        const CPoint from = SourceOf(piece, map, placed, x, y);
        if (IsInside(piece, from) && piece.At(from.x, from.y) != PiecePixel::Nothing)
            placed.Set(x, y, piece.At(from.x, from.y), piece.ColorAt(from.x, from.y));
    }
}

/// Adds up colours by their alpha and by how near they are.
class CBlend {
public:
    void Add(CColor color, double weight) {
        const double alpha = color.alpha * weight;
        m_red += color.red * alpha;
        m_green += color.green * alpha;
        m_blue += color.blue * alpha;
        m_alpha += alpha;
    }
    CColor Color() const {
        const auto part = [this](double sum) { return static_cast<std::uint8_t>(std::lround(sum / m_alpha)); };
        return m_alpha > 0 ? CColor{part(m_blue), part(m_green), part(m_red),
                                    static_cast<std::uint8_t>(std::lround(m_alpha))}
                           : CColor{0, 0, 0, 0};
    }

private:
    double m_red = 0, m_green = 0, m_blue = 0, m_alpha = 0;
};

// Between the four pixels around a point; what is beside the piece is transparent.
void SampleBetween(const CPiece& piece, const CPieceMap& map, CPiece& placed, int y) {
    for (int x = 0; x < placed.Width(); ++x) {
        const CRealPoint at = map.ToPiece({placed.place.x + x + 0.5, placed.place.y + y + 0.5});
        const double fromX = at.x - piece.place.x - 0.5;
        const double fromY = at.y - piece.place.y - 0.5;
        const CPoint low{static_cast<int>(std::floor(fromX)), static_cast<int>(std::floor(fromY))};
        CBlend blend;
        for (const CPoint step : {CPoint{0, 0}, {1, 0}, {0, 1}, {1, 1}}) {
            const CPoint from{low.x + step.x, low.y + step.y};
            if (IsInside(piece, from) && piece.At(from.x, from.y) != PiecePixel::Nothing)
                blend.Add(piece.ColorAt(from.x, from.y),
                          (1 - std::abs(fromX - from.x)) * (1 - std::abs(fromY - from.y)));
        }
        if (const CColor color = blend.Color(); color.alpha > 0)
            placed.Set(x, y, PiecePixel::Paint, color);
    }
}

} // namespace

CPoint SourceOf(const CPiece& piece, const CPieceMap& map, const CPiece& placed, int x, int y) {
    const CRealPoint at = map.ToPiece({placed.place.x + x + 0.5, placed.place.y + y + 0.5});
    return {static_cast<int>(std::floor(at.x)) - piece.place.x, static_cast<int>(std::floor(at.y)) - piece.place.y};
}

CPiece Placed(const CPiece& piece, const CPiecePlacement& placement) {
    if (placement.IsMove()) {
        CPiece moved = piece;
        moved.place = {piece.place.x + placement.move.x, piece.place.y + placement.move.y,
                       piece.place.endX + placement.move.x, piece.place.endY + placement.move.y};
        return moved;
    }
    const CPieceMap map(piece.place, placement);
    CPiece placed(map.Bounds());
    placed.what = piece.what;
    placed.isPicture = piece.isPicture;
    const auto sample = piece.isPicture && !map.IsExact() ? SampleBetween : SampleNearest;
    ParallelFor(placed.Height(), rowsAtOnce, [&](int begin, int end) {
        for (int y = begin; y < end; ++y)
            sample(piece, map, placed, y);
    });
    if (!map.IsExact() && piece.HasLines())
        JoinLines(piece, map, placed);
    return placed;
}

} // namespace velmor
