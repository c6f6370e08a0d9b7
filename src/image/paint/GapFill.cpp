#include "image/paint/GapFill.h"

#include "image/paint/GapMap.h"
#include "image/paint/GradientPaint.h"
#include "image/paint/LoopMask.h"
#include "image/paint/PaintBounds.h"
#include "image/paint/SolidPaint.h"
#include "image/paint/UnderLine.h"

#include <algorithm>
#include <functional>

namespace velmor {

namespace {

constexpr int opennessOfGaps = 3;
constexpr int leastOpenness = 24;

CMaskPlane LinesOf(const CCelImg& cel, const CGapFillChoices& choices) {
    CMaskPlane lines(cel);
    if (choices.otherLines != nullptr)
        lines.Add(*choices.otherLines);
    return lines;
}

CRect WholeOf(const CMaskPlane& plane) {
    return {0, 0, plane.Width(), plane.Height()};
}

// With all around it that distances up to half a gap see.
CRect WithSurroundings(const CRect& rect, int gap, const CMaskPlane& lines) {
    const int margin = gap / 2 + 2;
    return Intersection({rect.x - margin, rect.y - margin, rect.endX + margin, rect.endY + margin}, WholeOf(lines));
}

std::vector<bool> RoomsAtBorder(const CGapMap& map, const CMaskPlane& lines) {
    std::vector<bool> atBorder(static_cast<std::size_t>(map.RoomEnd()));
    map.ForEachRun([&](int y, int x, int endX, int room) {
        if (x == 0 || y == 0 || endX == lines.Width() || y + 1 == lines.Height())
            atBorder[static_cast<std::size_t>(room)] = true;
    });
    return atBorder;
}

// The narrowest place on the widest way from a pixel to the border of the image; nothing when all of it is wide.
std::optional<CPoint> FindLeak(const CMaskPlane& lines, const CRect& area, CPoint from, int gap) {
    const int openness = std::max(opennessOfGaps * gap, leastOpenness);
    const CGapMap map(lines, WithSurroundings(area, openness, lines), openness);
    std::vector<bool> reached = RoomsAtBorder(map, lines);
    const int room = map.RoomAt(from);
    if (reached[static_cast<std::size_t>(room)])
        return std::nullopt;
    CUnions joined;
    while (joined.Count() < map.RoomEnd())
        joined.Add();
    for (const CClosedGap& closed : map.ClosedGaps()) {
        const bool isOpen = reached[static_cast<std::size_t>(joined.Find(closed.roomA))] ||
                            reached[static_cast<std::size_t>(joined.Find(closed.roomB))];
        const int both = joined.Unite(closed.roomA, closed.roomB);
        reached[static_cast<std::size_t>(both)] = isOpen;
        if (isOpen && joined.Find(room) == both)
            return closed.at;
    }
    return std::nullopt;
}

bool TouchesBorder(const CRect& rect, const CMaskPlane& lines) {
    return rect.x == 0 || rect.y == 0 || rect.endX == lines.Width() || rect.endY == lines.Height();
}

// Rooms of which no pixel lies outside the mask.
CFillArea RoomsInside(const CCelImg& cel, const CMaskPlane& inside, const CGapFillChoices& choices) {
    const CMaskPlane lines = LinesOf(cel, choices);
    const CGapMap map(lines, WholeOf(lines), choices.gap);
    std::vector<bool> reachesOut(static_cast<std::size_t>(map.RoomEnd()));
    map.ForEachRun([&](int y, int x, int endX, int room) {
        inside.ForEachRun(y, x, endX, false, [&](int, int) { reachesOut[static_cast<std::size_t>(room)] = true; });
    });
    CFillArea area{CMaskPlane(cel.Width(), cel.Height()), {}, {}};
    CPaintBounds bounds;
    map.ForEachRun([&](int y, int x, int endX, int room) {
        if (reachesOut[static_cast<std::size_t>(room)])
            return;
        area.pixels.SetRun(y, x, endX);
        bounds.AddSpan(y, x, endX);
    });
    area.bounds = GrowUnderLines(area.pixels, bounds.Rect(), cel, choices);
    return area;
}

template<class Paint>
CPaintResult PaintFound(CCelImg& cel, const CFillArea& area, Paint paint) {
    if (area.leak)
        return {CStatus(), {}, area.leak};
    area.pixels.ForEachRun(area.bounds, std::ref(paint));
    if (!area.bounds.IsEmpty())
        cel.SetModified(true);
    return {CStatus(), area.bounds, {}};
}

} // namespace

CFillArea FindFillArea(const CCelImg& cel, CPoint at, const CGapFillChoices& choices) {
    const CMaskPlane lines = LinesOf(cel, choices);
    CFillArea area{CMaskPlane(cel.Width(), cel.Height()), {}, {}};
    const CRect free = BoundsOfFreeArea(lines, at);
    if (free.IsEmpty())
        return area;
    const CGapMap map(lines, WithSurroundings(free, choices.gap, lines), choices.gap);
    const int wanted = map.RoomAt(at);
    CPaintBounds bounds;
    map.ForEachRun([&](int y, int x, int endX, int room) {
        if (room != wanted)
            return;
        area.pixels.SetRun(y, x, endX);
        bounds.AddSpan(y, x, endX);
    });
    if (choices.gap > 0 && choices.refuseLeaks && TouchesBorder(bounds.Rect(), lines))
        area.leak = FindLeak(lines, bounds.Rect(), at, choices.gap);
    area.bounds = GrowUnderLines(area.pixels, bounds.Rect(), cel, choices);
    return area;
}

CFillArea FindBoxArea(const CCelImg& cel, CPoint corner1, CPoint corner2, const CGapFillChoices& choices) {
    CMaskPlane inside(cel.Width(), cel.Height());
    const CRect box = Intersection({std::min(corner1.x, corner2.x) + 1, std::min(corner1.y, corner2.y) + 1,
                                    std::max(corner1.x, corner2.x), std::max(corner1.y, corner2.y)},
                                   WholeOf(inside));
    for (int y = box.y; y < box.endY; ++y)
        inside.SetRun(y, box.x, box.endX);
    return RoomsInside(cel, inside, choices);
}

CFillArea FindLoopArea(const CCelImg& cel, std::span<const CPoint> loop, const CGapFillChoices& choices) {
    return RoomsInside(cel, InsideOfLoop(loop, {cel.Width(), cel.Height()}), choices);
}

CPaintResult PaintArea(CCelImg& cel, const CFillArea& area, CColor color) {
    return PaintFound(cel, area, CSolidPaint(cel, color));
}

CPaintResult PaintArea(CCelImg& cel, const CFillArea& area, CPoint from, CColor color1, CPoint to, CColor color2) {
    return PaintFound(cel, area, CGradientPaint(cel, from, color1, to, color2));
}

std::vector<CPassage> FindGaps(const CMaskPlane& lines, int gap) {
    const CGapMap map(lines, WholeOf(lines), gap);
    // A closed gap is met pixel by pixel, from its middle to its ends: of what hangs together the first counts.
    CMaskPlane known(lines.Width() + 2, lines.Height() + 2);
    std::vector<CPassage> gaps;
    for (const CClosedGap& closed : map.ClosedGaps()) {
        if (map.RoomAt(closed.at) == CGapMap::noRoom || closed.roomA == closed.roomB)
            continue;
        const bool isKnown = known.Has(closed.at.x + 1, closed.at.y + 1);
        for (int dy = 0; dy < 3; ++dy)
            known.SetRun(closed.at.y + dy, closed.at.x, closed.at.x + 3);
        if (isKnown)
            continue;
        if (const std::optional<CPassage> passage = PassageAt(lines, closed.at, gap + 2))
            gaps.push_back(*passage);
    }
    std::ranges::stable_sort(gaps, std::greater<>(), &CPassage::SquaredLength);
    return gaps;
}

} // namespace velmor
