#include "image/paint/RunAreas.h"

#include "image/paint/PaintBounds.h"

namespace velmor {

namespace {

struct CFreeRun {
    int y, x, endX, area;
};

std::vector<CFreeRun> FreeRuns(const CMaskPlane& lines, CUnions& areas) {
    std::vector<CFreeRun> runs;
    CRunJoiner joiner(areas);
    for (int y = 0; y < lines.Height(); ++y) {
        joiner.StartRow();
        lines.ForEachRun(y, 0, lines.Width(), false, [&](int x, int endX) {
            runs.push_back({y, x, endX, joiner.Add(x, endX)});
        });
    }
    return runs;
}

} // namespace

CRect BoundsOfFreeArea(const CMaskPlane& lines, CPoint at) {
    if (!lines.Contains(at) || lines.Has(at.x, at.y))
        return {};
    CUnions areas;
    const std::vector<CFreeRun> runs = FreeRuns(lines, areas);
    int wanted = -1;
    for (const CFreeRun& run : runs)
        if (run.y == at.y && run.x <= at.x && at.x < run.endX)
            wanted = areas.Find(run.area);
    CPaintBounds bounds;
    for (const CFreeRun& run : runs)
        if (areas.Find(run.area) == wanted)
            bounds.AddSpan(run.y, run.x, run.endX);
    return bounds.Rect();
}

} // namespace velmor
