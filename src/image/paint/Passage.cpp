#include "image/paint/Passage.h"

namespace velmor {

namespace {

bool IsLine(const CMaskPlane& lines, CPoint at) {
    return !lines.Contains(at) || lines.Has(at.x, at.y);
}

// The nearest line pixel for which accept(dx, dy) holds.
template<class Accept>
std::optional<CPoint> NearestLine(const CMaskPlane& lines, CPoint at, int reach, Accept accept) {
    std::optional<CPoint> nearest;
    int best = reach * reach + 1;
    for (int dy = -reach; dy <= reach; ++dy)
        for (int dx = -reach; dx <= reach; ++dx) {
            const int square = dx * dx + dy * dy;
            const CPoint there{at.x + dx, at.y + dy};
            if (square < best && accept(dx, dy) && IsLine(lines, there)) {
                best = square;
                nearest = there;
            }
        }
    return nearest;
}

// The line pixel nearest to `to` that lies on the side of `from`, seen from the middle between them.
CPoint Nearer(const CMaskPlane& lines, CPoint from, CPoint to, int reach) {
    const int alongX = from.x - to.x;
    const int alongY = from.y - to.y;
    const int half = (alongX * alongX + alongY * alongY) / 2;
    return NearestLine(lines, to, reach, [&](int dx, int dy) { return dx * alongX + dy * alongY > half; })
        .value_or(from);
}

} // namespace

std::optional<CPassage> PassageAt(const CMaskPlane& lines, CPoint at, int reach) {
    const std::optional<CPoint> from = NearestLine(lines, at, reach, [](int, int) { return true; });
    if (!from)
        return std::nullopt;
    const int fromX = from->x - at.x;
    const int fromY = from->y - at.y;
    const std::optional<CPoint> to =
        NearestLine(lines, at, reach, [&](int dx, int dy) { return dx * fromX + dy * fromY < 0; });
    if (!to)
        return std::nullopt;
    CPassage passage{*from, *to};
    for (int before = 0; before != passage.SquaredLength();) {
        before = passage.SquaredLength();
        passage.from = Nearer(lines, passage.from, passage.to, reach + 1);
        passage.to = Nearer(lines, passage.to, passage.from, reach + 1);
    }
    return passage;
}

} // namespace velmor
