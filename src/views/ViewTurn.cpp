#include "views/ViewTurn.h"

#include <cmath>
#include <numbers>

namespace velmor {

namespace {

struct CDirection {
    double cosine;
    double sine;
};

// Quarter turns are exact, so that pixels stay pixels.
CDirection DirectionOf(double degrees) {
    if (degrees == 0)
        return {1, 0};
    if (degrees == 90)
        return {0, 1};
    if (degrees == 180)
        return {-1, 0};
    if (degrees == 270)
        return {0, -1};
    const double angle = degrees * std::numbers::pi / 180;
    return {std::cos(angle), std::sin(angle)};
}

double Normal(double degrees) {
    const double rest = std::fmod(degrees, 360);
    const double positive = rest < 0 ? rest + 360 : rest;
    return positive >= 360 ? 0 : positive; // a tiny negative angle rounds up to a whole turn
}

} // namespace

CViewTurn CViewTurn::TurnedBy(double more) const {
    return {Normal(degrees + more), mirrored};
}

CViewTurn CViewTurn::Mirrored() const {
    return {Normal(-degrees), !mirrored};
}

CRealPoint CViewTurn::Apply(CRealPoint point) const {
    const CDirection turn = DirectionOf(degrees);
    const double x = mirrored ? -point.x : point.x;
    return {x * turn.cosine - point.y * turn.sine, x * turn.sine + point.y * turn.cosine};
}

CRealPoint CViewTurn::Undo(CRealPoint point) const {
    const CDirection turn = DirectionOf(degrees);
    const double x = point.x * turn.cosine + point.y * turn.sine;
    return {mirrored ? -x : x, -point.x * turn.sine + point.y * turn.cosine};
}

} // namespace velmor
