#include "image/clean/LineWeight.h"

#include "image/clean/NearestPixels.h"
#include "image/clean/Thinning.h"
#include "image/paint/MaskWords.h"
#include "platform/process/Parallel.h"

#include <algorithm>
#include <atomic>
#include <new>
#include <vector>

namespace velmor {

namespace {

constexpr int rowsAtLeast = 16; // that are worth a thread

CStatus NoCel() {
    return CStatus::Failure("Only the lines of cels can be made thicker or thinner");
}

CStatus NoMemory() {
    return CStatus::Failure("Unable to allocate memory for cel!");
}

/// A byte for every pixel of a row: `line` for line pixels, `other` for the rest.
void MarkRow(const CCelImg& cel, int y, std::span<std::uint8_t> row, std::uint8_t line, std::uint8_t other) {
    std::vector<MaskWord> words(MaskWordsOf(cel.Width()));
    LoadMaskRow(cel, y, words);
    std::ranges::fill(row, other);
    for (std::size_t i = 0; i < words.size(); ++i)
        ForEachBit(words[i], static_cast<int>(i) * maskWordBits,
                   [&](int x) { row[static_cast<std::size_t>(x)] = line; });
}

CNearestPixels NearestOf(const CCelImg& cel, int reach, bool lines) {
    return {{cel.Width(), cel.Height()}, reach, [&](int y, std::span<std::uint8_t> row) {
                MarkRow(cel, y, row, lines ? 1 : 0, lines ? 0 : 1);
            }};
}

} // namespace

CStatus ThickenLines(CCelImg& cel, int pixels) try {
    if (cel.GetLoadState() != LoadState::Cel)
        return NoCel();
    const CNearestPixels lines = NearestOf(cel, std::clamp(pixels, 1, mostLineWeightChange), true);
    std::atomic<bool> hasGrown = false;
    ParallelFor(cel.Height(), rowsAtLeast, [&](int begin, int end) {
        for (int y = begin; y < end; ++y)
            for (int x = 0; x < cel.Width(); ++x)
                if (const std::optional<CPoint> line = lines.Find({x, y}); line && *line != CPoint{x, y}) {
                    cel.SetLine(x, y, true);
                    cel.SetColorAt(x, y, cel.ColorAt(line->x, line->y)); // of one that nobody changes
                    hasGrown = true;
                }
    });
    if (hasGrown)
        cel.SetModified(true);
    return {};
} catch (const std::bad_alloc&) {
    return NoMemory();
}

CStatus ThinLines(CCelImg& cel, int pixels) try {
    if (cel.GetLoadState() != LoadState::Cel)
        return NoCel();
    const int layers = std::clamp(pixels, 1, mostLineWeightChange);
    CThinning thinning({cel.Width(), cel.Height()});
    for (int y = 0; y < cel.Height(); ++y)
        MarkRow(cel, y, thinning.Row(y), 1, 0);
    const std::vector<CPoint> uncovered = thinning.Peel(layers);
    if (uncovered.empty())
        return {};
    // Each of the two halves of a layer goes at most one pixel deeper, maybe diagonally.
    const CNearestPixels paint = NearestOf(cel, 3 * layers, false);
    std::vector<CColor> colors(uncovered.size());
    std::ranges::transform(uncovered, colors.begin(), [&](const CPoint& at) {
        const CPoint from = paint.Find(at).value_or(at);
        return cel.ColorAt(from.x, from.y);
    });
    for (std::size_t i = 0; i < uncovered.size(); ++i) {
        cel.SetLine(uncovered[i].x, uncovered[i].y, false);
        cel.SetColorAt(uncovered[i].x, uncovered[i].y, colors[i]);
    }
    cel.SetModified(true);
    return {};
} catch (const std::bad_alloc&) {
    return NoMemory();
}

} // namespace velmor
