#include "image/select/Piece.h"

#include <array>
#include <utility>

namespace velmor {

namespace {

constexpr CColor paper{255, 255, 255, 255};
constexpr std::array<CPoint, 4> sides{{{-1, 0}, {1, 0}, {0, -1}, {0, 1}}};

/// Closes paint over pixels that were lines: wave after wave, each pixel takes the colour of the first of its sides
/// that has one.
class CPaintClosing {
    using Wave = std::vector<std::pair<CPoint, CColor>>;

public:
    CPaintClosing(CCelImg& cel, std::vector<CPoint> open) : m_cel(cel), m_open(std::move(open)) {
        m_isOpen = CSelectionMask({cel.Width(), cel.Height()});
        for (const CPoint pixel : m_open)
            m_isOpen.AddRun(pixel.y, pixel.x, pixel.x + 1);
    }

    void Run() {
        Wave wave = FirstWave();
        while (!wave.empty())
            wave = Next(wave);
        for (const CPoint pixel : m_open)
            if (m_isOpen.Has(pixel.x, pixel.y))
                m_cel.SetColorAt(pixel.x, pixel.y, paper); // lines all around
    }

private:
    bool HasPaint(CPoint at) const {
        return at.x >= 0 && at.y >= 0 && at.x < m_cel.Width() && at.y < m_cel.Height() &&
               !m_isOpen.Has(at.x, at.y) && !m_cel.IsLine(at.x, at.y);
    }
    void Add(CPoint pixel, Wave& wave) const {
        for (const CPoint side : sides)
            if (const CPoint beside{pixel.x + side.x, pixel.y + side.y}; HasPaint(beside)) {
                wave.emplace_back(pixel, m_cel.ColorAt(beside.x, beside.y));
                return;
            }
    }
    Wave FirstWave() const {
        Wave wave;
        for (const CPoint pixel : m_open)
            Add(pixel, wave);
        return wave;
    }
    // Writes a wave and finds the one behind it.
    Wave Next(const Wave& wave) {
        for (const auto& [pixel, color] : wave) {
            m_cel.SetColorAt(pixel.x, pixel.y, color);
            m_isOpen.RemoveRun(pixel.y, pixel.x, pixel.x + 1);
        }
        Wave next;
        for (const auto& [pixel, color] : wave)
            for (const CPoint side : sides)
                if (const CPoint beside{pixel.x + side.x, pixel.y + side.y}; m_isOpen.Has(beside.x, beside.y))
                    Add(beside, next);
        return next;
    }

    CCelImg& m_cel;
    std::vector<CPoint> m_open;
    CSelectionMask m_isOpen;
};

} // namespace

CPaintResult TakeOut(CCelImg& image, const CPiece& piece) {
    return PaintWithMemory([&] {
        const CRect changed = Intersection(piece.place, {0, 0, image.Width(), image.Height()});
        const bool closes = piece.what == SelectWhat::Line;
        std::vector<CPoint> open;
        for (int y = changed.y; y < changed.endY; ++y)
            for (int x = changed.x; x < changed.endX; ++x) {
                if (piece.At(x - piece.place.x, y - piece.place.y) == PiecePixel::Nothing)
                    continue;
                if (piece.isPicture) {
                    image.PlaneOf(Channel::Alpha)[image.IndexOf(x, y)] = 0;
                    continue;
                }
                image.SetLine(x, y, false);
                if (closes)
                    open.push_back({x, y});
                else
                    image.SetColorAt(x, y, paper);
            }
        if (!open.empty())
            CPaintClosing(image, std::move(open)).Run();
        if (!changed.IsEmpty())
            image.SetModified(true);
        return changed;
    });
}

} // namespace velmor
