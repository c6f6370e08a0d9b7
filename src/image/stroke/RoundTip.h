#pragma once

#include "image/CelImg.h"
#include "image/RealPoint.h"
#include "image/paint/PaintResult.h"

#include <functional>
#include <optional>

namespace velmor {

/// What a round tip does to what it passes over.
enum class TipAction {
    Ink,     ///< black lines; for cels alone
    Recolor, ///< gives line pixels of a cel another colour; makes a picture more opaque
    Erase    ///< turns line pixels of a cel into paint; makes a picture more transparent
};

/// A round tip at a point of an image, whichever point between the pixels that is.
struct CTipPlace {
    CRealPoint at;
    double radius = 0.5; ///< what is less counts as 0.5, which draws lines one pixel wide

    bool operator==(const CTipPlace&) const = default;
};

/// Every pixel that a tip which goes straight from one place to another passes over with its centre inside, growing
/// or shrinking evenly: visit(y, x, endX) for columns x to endX - 1 of each row, bottom row first. A tip that stays
/// has at least the pixel it is in. What lies outside an image of the size is left out.
void SweepRows(const CTipPlace& from, const CTipPlace& to, CSize size,
               const std::function<void(int y, int x, int endX)>& visit);
/// A rectangle that holds all of them.
CRect SweepBounds(const CTipPlace& from, const CTipPlace& to);

/// A round tip on its way over an image: everything between the places that it is led to is painted, so that the
/// edges of its line have no steps but the pixels'. The soft tips that work on pictures leave a stamp at each pixel
/// of their way, since stamps add up.
class CRoundTip {
public:
    /// `color` is taken without its alpha.
    CRoundTip(TipAction action, CColor color) : m_action(action), m_color(color) { m_color.alpha = 255; }

    /// What MoveTo() may change.
    CRect Reach(const CTipPlace& to) const { return SweepBounds(m_at.value_or(to), to); }
    /// The first time puts it down.
    CPaintResult MoveTo(CCelImg& image, const CTipPlace& to);

private:
    CRect Sweep(CCelImg& cel, const CTipPlace& from, const CTipPlace& to) const;
    CRect StampAlong(CCelImg& picture, const CTipPlace& from, const CTipPlace& to);

    TipAction m_action;
    CColor m_color;
    std::optional<CTipPlace> m_at;
    double m_toNextStamp = 0; ///< how far on
};

} // namespace velmor
