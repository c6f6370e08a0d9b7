#include "image/paint/LoopMask.h"

#include <algorithm>
#include <cmath>

namespace velmor {

namespace {

struct CCrossing {
    int x;    ///< the first pixel that is right of the loop here
    int turn; ///< 1 upwards, -1 downwards
};

// Where a side of the loop crosses the rows of the image; its upper end does not belong to it.
void AddCrossings(std::vector<std::vector<CCrossing>>& rows, CPoint a, CPoint b) {
    const int turn = a.y < b.y ? 1 : -1;
    if (turn < 0)
        std::swap(a, b);
    const int endY = std::min(b.y, static_cast<int>(rows.size()));
    for (int y = std::max(a.y, 0); y < endY; ++y) {
        const double x = a.x + static_cast<double>(b.x - a.x) * (y - a.y) / (b.y - a.y);
        rows[static_cast<std::size_t>(y)].push_back({static_cast<int>(std::ceil(x)), turn});
    }
}

void SetBetween(CMaskPlane& inside, int y, std::vector<CCrossing>& crossings) {
    std::ranges::sort(crossings, {}, &CCrossing::x);
    int turns = 0;
    for (std::size_t i = 0; i + 1 < crossings.size(); ++i) {
        turns += crossings[i].turn;
        const int x = std::max(crossings[i].x, 0);
        const int endX = std::min(crossings[i + 1].x, inside.Width());
        if (turns != 0 && x < endX)
            inside.SetRun(y, x, endX);
    }
}

} // namespace

CMaskPlane InsideOfLoop(std::span<const CPoint> loop, CSize image) {
    CMaskPlane inside(image.width, image.height);
    std::vector<std::vector<CCrossing>> rows(static_cast<std::size_t>(image.height));
    for (std::size_t i = 0; i < loop.size(); ++i)
        AddCrossings(rows, loop[i], loop[(i + 1) % loop.size()]);
    for (int y = 0; y < image.height; ++y)
        SetBetween(inside, y, rows[static_cast<std::size_t>(y)]);
    return inside;
}

} // namespace velmor
