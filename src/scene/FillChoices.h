#pragma once

namespace velmor {

/// Whose lines a fill stops at.
enum class FillLines {
    ThisCel = 0,
    VisibleCels = 1 ///< those of the other cels of the current frame as well, where they lie over this one
};

/// How the bucket fills, beyond its mode. As they start nothing is added to a plain fill.
struct CFillChoices {
    int gap = 0;             ///< up to which gaps between lines are closed, 0 to mostFillGap pixels
    bool refuseLeaks = true; ///< a fill that would run out to the border all the same is refused
    int underLine = 0;       ///< so many pixels, up to mostUnderLine, paint goes on under lines of other cels
    FillLines lines = FillLines::ThisCel;
    bool overAreas = false; ///< a dragged solid fill fills every area on its way

    bool IsPlain() const { return gap == 0 && lines == FillLines::ThisCel && !overAreas; }
    bool operator==(const CFillChoices&) const = default;
};

} // namespace velmor
