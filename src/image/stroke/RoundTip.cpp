#include "image/stroke/RoundTip.h"

#include "image/paint/PaintBounds.h"
#include "image/paint/PixelSpans.h"
#include "image/stroke/StrokePoint.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace velmor {

namespace {

constexpr double stampDistance = 1;
constexpr double mostStamps = 1 << 16; ///< along one piece of the way

BrushAction ActionOf(TipAction action) {
    return action == TipAction::Erase ? BrushAction::Erase : BrushAction::DrawLine;
}

// Full in the core, falling off to the edge as that of the brushes with fixed sizes does.
int SoftWeight(double distance, double radius) {
    const double core = 2 * radius / 3;
    if (distance <= core)
        return 255;
    return distance < radius ? static_cast<int>(255 - (distance - core) / (radius - core) * 255) : 0;
}

void StampSoft(CCelImg& picture, const CTipPlace& place, BrushAction action, CPaintBounds& bounds) {
    SweepRows(place, place, {picture.Width(), picture.Height()}, [&](int y, int x, int endX) {
        std::uint8_t* const alphas = picture.PlaneOf(Channel::Alpha).data() + picture.IndexOf(0, y);
        for (; x < endX; ++x)
            if (const int weight = SoftWeight(Distance(place.at, {x + 0.5, y + 0.5}), std::max(place.radius, 1.0));
                weight > 0) {
                alphas[x] = SoftAlpha(alphas[x], weight, action);
                bounds.AddSpan(y, x, x + 1);
            }
    });
}

} // namespace

CPaintResult CRoundTip::MoveTo(CCelImg& image, const CTipPlace& to) {
    const CTipPlace from = std::exchange(m_at, to).value_or(to);
    image.SetModified(true);
    return {CStatus(), image.LineMask().empty() ? StampAlong(image, from, to) : Sweep(image, from, to)};
}

CRect CRoundTip::Sweep(CCelImg& cel, const CTipPlace& from, const CTipPlace& to) const {
    CPaintBounds bounds;
    SweepRows(from, to, {cel.Width(), cel.Height()}, [&](int y, int x, int endX) {
        if (m_action == TipAction::Ink)
            InkSpan(cel, y, x, endX, bounds);
        else
            TreatLines(cel, y, x, endX, ActionOf(m_action), m_color, bounds);
    });
    return bounds.Rect();
}

CRect CRoundTip::StampAlong(CCelImg& picture, const CTipPlace& from, const CTipPlace& to) {
    CPaintBounds bounds;
    const double length = Distance(from.at, to.at);
    const double step = std::max(stampDistance, length / mostStamps);
    double along = m_toNextStamp;
    for (; along <= length; along += step) {
        const double share = length > 0 ? along / length : 0;
        StampSoft(picture, {Between(from.at, to.at, share), from.radius + (to.radius - from.radius) * share},
                  ActionOf(m_action), bounds);
    }
    m_toNextStamp = along - length;
    return bounds.Rect();
}

} // namespace velmor
