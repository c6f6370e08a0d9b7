#include "xsheet/PaceCurve.h"

#include <algorithm>
#include <cmath>

namespace velmor {

namespace {

double Bezier(double first, double second, double t) {
    const double rest = 1 - t;
    return 3 * rest * rest * t * first + 3 * rest * t * t * second + t * t * t;
}

CRealPoint KeptHandle(CRealPoint handle, CRealPoint otherwise) {
    if (!std::isfinite(handle.x) || !std::isfinite(handle.y))
        return otherwise;
    return {std::clamp(handle.x, 0.0, 1.0),
            std::clamp(handle.y, -CPaceCurve::mostBeyond, 1 + CPaceCurve::mostBeyond)};
}

} // namespace

double CPaceCurve::At(double time) const {
    if (!(time > 0))
        return 0;
    if (time >= 1)
        return 1;
    const CPaceCurve kept = Kept();
    // Across, the curve never goes back: halving finds the place, to the last bit that there is.
    double low = 0;
    double high = 1;
    for (int i = 0; i < 60; ++i) {
        const double middle = (low + high) / 2;
        (Bezier(kept.first.x, kept.second.x, middle) < time ? low : high) = middle;
    }
    return Bezier(kept.first.y, kept.second.y, (low + high) / 2);
}

CPaceCurve CPaceCurve::Kept() const {
    constexpr CPaceCurve made;
    return {KeptHandle(first, made.first), KeptHandle(second, made.second)};
}

} // namespace velmor
