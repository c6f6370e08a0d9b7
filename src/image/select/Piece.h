#pragma once

#include "image/CelImg.h"
#include "image/paint/PaintResult.h"
#include "image/select/SelectWhat.h"
#include "image/select/SelectionMask.h"

#include <array>
#include <cstdint>
#include <vector>

namespace velmor {

/// What a piece has at a pixel.
enum class PiecePixel : std::uint8_t { Nothing = 0, Paint = 1, Line = 2 };

/// A part of an image that was lifted out of it, with its colours and, of a cel, its lines. A value.
struct CPiece {
    CPiece() = default;
    /// Nothing at any pixel of a place. May throw std::bad_alloc.
    explicit CPiece(const CRect& at);

    CRect place; ///< in the image that it is for; may lie beside it
    /// What is there at each pixel, and its colour; row 0 at the bottom, of the width of `place`.
    std::vector<PiecePixel> pixels;
    std::array<CPlane, 4> planes;
    /// Which part of a cel it is; Both for a piece of a picture.
    SelectWhat what = SelectWhat::Both;
    /// It comes from a picture: its alpha says how much it covers.
    bool isPicture = false;

    int Width() const { return place.endX - place.x; }
    int Height() const { return place.endY - place.y; }
    bool IsEmpty() const { return place.IsEmpty(); }
    bool HasLines() const;
    /// Coordinates of the piece itself, inside it.
    std::size_t IndexOf(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(Width()) + static_cast<std::size_t>(x);
    }
    PiecePixel At(int x, int y) const { return pixels[IndexOf(x, y)]; }
    CColor ColorAt(int x, int y) const;
    void Set(int x, int y, PiecePixel pixel, CColor color);
};

/// Copies the selected part of an image. Of a cel, lines are the pixels with a line bit, paint are the others. The
/// place is as small as it can be; an empty piece when nothing is there. May throw std::bad_alloc.
CPiece LiftedFrom(const CCelImg& image, const CSelectionMask& mask, SelectWhat what);

/// Empties an image where a piece has been lifted from it. A picture becomes transparent there, as under the
/// eraser. In a cel white paper stays behind, as in a new one; but where lines alone are taken away, the paint
/// beside them closes over them: each pixel gets the colour of the nearest one without a line. (The eraser's colour
/// would leave the line to be seen in painted areas.)
CPaintResult TakeOut(CCelImg& image, const CPiece& piece);

/// Puts a piece down at its place, moved by so many pixels; what lies beside the image is left out.
///
/// On a cel: lines set their line bits and their colours. Paint alone goes where there is no line, as every fill
/// does. A piece with both covers what is there, lines included: it is cut out and lies on top. Onto a picture, and
/// from a picture onto a cel, colours go by their alpha, and what a cel's piece had as lines is colour like the
/// rest; lines of a cel stay above a piece of a picture.
CPaintResult Drop(CCelImg& image, const CPiece& piece, CPoint move = {});

/// What a piece covers of an image of a size.
CSelectionMask MaskOf(const CPiece& piece, CSize image, CPoint move = {});

} // namespace velmor
