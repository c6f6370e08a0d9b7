#pragma once

#include "image/RealPoint.h"
#include "image/select/Piece.h"

namespace velmor {

/// Where a piece goes. It is scaled and turned about the middle of its own place, then moved.
struct CPiecePlacement {
    CPoint move;        ///< in pixels
    double degrees = 0; ///< counter-clockwise as it is seen
    double scaleX = 1;  ///< along its own sides, before it is turned; below 0 mirrors; never 0
    double scaleY = 1;

    /// Nothing but a move.
    bool IsMove() const { return degrees == 0 && scaleX == 1 && scaleY == 1; }
    bool operator==(const CPiecePlacement&) const = default;
};

/// The way from a piece's own place to the image and back, between image points.
class CPieceMap {
public:
    CPieceMap(const CRect& place, const CPiecePlacement& placement);

    CRealPoint ToImage(CRealPoint point) const;
    CRealPoint ToPiece(CRealPoint point) const;
    /// All pixels that the piece may come to.
    CRect Bounds() const;
    /// Each pixel comes to just one: mirrored, or turned by quarters.
    bool IsExact() const { return m_isExact; }

private:
    CRealPoint m_centre;
    CRealPoint m_target; ///< where the centre goes
    double m_scaleX = 1, m_scaleY = 1;
    double m_cos = 1, m_sin = 0;
    CRect m_place;
    bool m_isExact = false;
};

/// The pixel of a piece that is nearest to the middle of pixel (x, y) of what is placed; it may lie beside the
/// piece.
CPoint SourceOf(const CPiece& piece, const CPieceMap& map, const CPiece& placed, int x, int y);

/// Whether the result would have a size that can be worked with: pieces may grow to four times as many pixels as
/// the image has, and are at least a pixel wide and high.
bool CanPlace(const CPiece& piece, const CPiecePlacement& placement, CSize image);

/// The piece as it is there, always from the piece as it was lifted. Moving, mirroring and turning by quarters are
/// exact. Otherwise a cel's colours are those of the nearest pixel, so that no new ones arise, and its lines stay
/// one bit: what hangs together (corners included) goes on doing so, however small or turned. Pictures are sampled
/// between their pixels. May throw std::bad_alloc.
CPiece Placed(const CPiece& piece, const CPiecePlacement& placement);

} // namespace velmor
