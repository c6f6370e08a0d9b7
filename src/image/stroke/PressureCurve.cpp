#include "image/stroke/PressureCurve.h"

#include <algorithm>

namespace velmor {

namespace {

double Bezier(double first, double second, double t) {
    const double rest = 1 - t;
    return 3 * rest * rest * t * first + 3 * rest * t * t * second + t * t * t;
}

} // namespace

double CPressureCurve::Of(double pressure) const {
    const double wanted = std::clamp(pressure, 0.0, 1.0);
    const double x1 = std::clamp(first.x, 0.0, 1.0);
    const double x2 = std::clamp(second.x, 0.0, 1.0);
    // Across, the curve never goes back: halving finds the place.
    double low = 0;
    double high = 1;
    for (int i = 0; i < 40; ++i) {
        const double middle = (low + high) / 2;
        (Bezier(x1, x2, middle) < wanted ? low : high) = middle;
    }
    return Bezier(std::clamp(first.y, 0.0, 1.0), std::clamp(second.y, 0.0, 1.0), (low + high) / 2);
}

} // namespace velmor
