#include "image/paint/UnderLine.h"

#include <utility>

namespace velmor {

namespace {

MaskWord Beside(std::span<const MaskWord> row, std::size_t i) {
    const MaskWord fromLeft = i > 0 ? row[i - 1] << (maskWordBits - 1) : 0;
    const MaskWord fromRight = i + 1 < row.size() ? row[i + 1] >> (maskWordBits - 1) : 0;
    return row[i] >> 1 | fromLeft | row[i] << 1 | fromRight;
}

// The pixels of `room` beside `area`.
CMaskPlane NextTo(const CMaskPlane& area, const CMaskPlane& room) {
    CMaskPlane next(area.Width(), area.Height());
    for (int y = 0; y < area.Height(); ++y) {
        const std::span<MaskWord> out = next.Row(y);
        for (std::size_t i = 0; i < out.size(); ++i) {
            const MaskWord below = y > 0 ? area.Row(y - 1)[i] : 0;
            const MaskWord above = y + 1 < area.Height() ? area.Row(y + 1)[i] : 0;
            out[i] = (Beside(area.Row(y), i) | below | above) & room.Row(y)[i];
        }
    }
    return next;
}

CMaskPlane AllOf(const CMaskPlane& like) {
    CMaskPlane all(like.Width(), like.Height());
    for (int y = 0; y < like.Height(); ++y)
        all.SetRun(y, 0, like.Width());
    return all;
}

} // namespace

CRect GrowUnderLines(CMaskPlane& area, const CRect& bounds, const CCelImg& cel, const CGapFillChoices& choices) {
    if (choices.underLine <= 0 || choices.otherLines == nullptr || bounds.IsEmpty())
        return bounds;
    const CMaskPlane own(cel);
    CMaskPlane room = *choices.otherLines;
    room.Remove(own);
    CMaskPlane across = AllOf(area);
    across.Remove(*choices.otherLines);
    across.Remove(own);
    across.Remove(area);
    for (int step = 0; step < choices.underLine; ++step) {
        const CMaskPlane ours = NextTo(area, room);
        CMaskPlane theirs = NextTo(across, room);
        room.Remove(ours);
        theirs.Remove(ours);
        room.Remove(theirs);
        area.Add(ours);
        across.Add(theirs);
    }
    const int reach = choices.underLine;
    return Intersection({bounds.x - reach, bounds.y - reach, bounds.endX + reach, bounds.endY + reach},
                        {0, 0, area.Width(), area.Height()});
}

} // namespace velmor
