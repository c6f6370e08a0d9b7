#include "views/prompter/TimeLeft.h"

namespace velmor {

std::string TimeLeftText(int percent, std::int64_t elapsedMilliseconds) {
    constexpr std::int64_t earliestGuess = 3000;
    constexpr std::int64_t leastTotal = 20000;
    if (percent <= 0 || percent > 100 || elapsedMilliseconds < earliestGuess)
        return {};
    const std::int64_t total = elapsedMilliseconds * 100 / percent;
    if (total < leastTotal)
        return {};
    const std::int64_t seconds = (total - elapsedMilliseconds + 999) / 1000;
    // Rounded up, in steps that grow with the time, so that the text does not flicker.
    if (seconds <= 5)
        return "A few seconds left";
    if (seconds <= 55)
        return "About " + std::to_string((seconds + 4) / 5 * 5) + " seconds left";
    const std::int64_t minutes = (seconds + 59) / 60;
    if (minutes < 60)
        return minutes == 1 ? "About a minute left" : "About " + std::to_string(minutes) + " minutes left";
    return "About " + std::to_string(minutes / 60) + " h " + std::to_string(minutes % 60) + " min left";
}

} // namespace velmor
