#include "image/select/Piece.h"

#include <algorithm>

namespace velmor {

namespace {

constexpr std::array channels{Channel::Red, Channel::Green, Channel::Blue, Channel::Alpha};

std::size_t AreaOf(const CRect& rect) {
    return static_cast<std::size_t>(rect.endX - rect.x) * static_cast<std::size_t>(rect.endY - rect.y);
}

PiecePixel PixelOf(const CCelImg& image, int x, int y, SelectWhat what) {
    const bool isLine = image.IsLine(x, y);
    if (image.GetLoadState() == LoadState::Cel && !(isLine ? HoldsLines(what) : HoldsPaint(what)))
        return PiecePixel::Nothing;
    return isLine ? PiecePixel::Line : PiecePixel::Paint;
}

// Around the pixels that would be lifted.
CRect PlaceOf(const CCelImg& image, const CSelectionMask& mask, SelectWhat what) {
    if (what == SelectWhat::Both || image.GetLoadState() != LoadState::Cel)
        return mask.Bounds();
    const CRect& bounds = mask.Bounds();
    CRect place;
    for (int y = bounds.y; y < bounds.endY; ++y) {
        const auto row = mask.Row(y);
        const auto isLifted = [&](int x) {
            return row[static_cast<std::size_t>(x)] != 0 && PixelOf(image, x, y, what) != PiecePixel::Nothing;
        };
        int first = bounds.x;
        while (first < bounds.endX && !isLifted(first))
            ++first;
        int end = bounds.endX;
        while (end > first && !isLifted(end - 1))
            --end;
        if (first < end)
            place = Union(place, {first, y, end, y + 1});
    }
    return place;
}

} // namespace

CPiece::CPiece(const CRect& at) : place(at), pixels(AreaOf(at)) {
    for (CPlane& plane : planes)
        plane = CPlane(pixels.size(), 0);
}

bool CPiece::HasLines() const {
    return std::ranges::find(pixels, PiecePixel::Line) != pixels.end();
}

CColor CPiece::ColorAt(int x, int y) const {
    const std::size_t index = IndexOf(x, y);
    return {planes[2].Span()[index], planes[1].Span()[index], planes[0].Span()[index], planes[3].Span()[index]};
}

void CPiece::Set(int x, int y, PiecePixel pixel, CColor color) {
    const std::size_t index = IndexOf(x, y);
    pixels[index] = pixel;
    planes[0].Span()[index] = color.red;
    planes[1].Span()[index] = color.green;
    planes[2].Span()[index] = color.blue;
    planes[3].Span()[index] = color.alpha;
}

CPiece LiftedFrom(const CCelImg& image, const CSelectionMask& mask, SelectWhat what) {
    if (image.GetLoadState() == LoadState::Nothing || mask.Size() != CSize{image.Width(), image.Height()})
        return {};
    CPiece piece(PlaceOf(image, mask, what));
    piece.isPicture = image.GetLoadState() == LoadState::Picture;
    piece.what = piece.isPicture ? SelectWhat::Both : what;
    const CRect& place = piece.place;
    for (int y = place.y; y < place.endY; ++y) {
        const auto row = mask.Row(y);
        PiecePixel* const pixels = piece.pixels.data() + piece.IndexOf(0, y - place.y);
        for (int x = place.x; x < place.endX; ++x)
            if (row[static_cast<std::size_t>(x)] != 0)
                pixels[x - place.x] = PixelOf(image, x, y, what);
        for (std::size_t plane = 0; plane < channels.size(); ++plane)
            std::copy_n(image.PlaneOf(channels[plane]).data() + image.IndexOf(place.x, y), place.endX - place.x,
                        piece.planes[plane].Span().data() + piece.IndexOf(0, y - place.y));
    }
    return piece;
}

CSelectionMask MaskOf(const CPiece& piece, CSize image, CPoint move) {
    CSelectionMask mask(image);
    for (int y = 0; y < piece.Height(); ++y)
        for (int x = 0; x < piece.Width();) {
            const int first = x;
            while (x < piece.Width() && piece.At(x, y) != PiecePixel::Nothing)
                ++x;
            if (first < x)
                mask.AddRun(piece.place.y + move.y + y, piece.place.x + move.x + first, piece.place.x + move.x + x);
            else
                ++x;
        }
    mask.Measure();
    return mask;
}

} // namespace velmor
