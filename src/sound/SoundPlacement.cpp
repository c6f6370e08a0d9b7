#include "sound/SoundPlacement.h"

#include <cmath>

namespace velmor {

double GainOf(const CSoundPlacement& placement) {
    constexpr double tenthsOfADecade = 200; // of pressure, which samples are
    return placement.level <= CSoundPlacement::leastLevel ? 0 : std::pow(10, placement.level / tenthsOfADecade);
}

} // namespace velmor
