#include "scene/preview/PreviewChoices.h"

#include "scene/Settings.h"
#include "xsheet/XSheet.h"

#include <algorithm>
#include <array>

namespace velmor {

namespace {

constexpr std::array speeds = {10, 25, 50, 75, 100, 150, 200};

} // namespace

CPreviewChoices CPreviewChoices::Remembered(const CProfile& profile) {
    CPreviewChoices choices;
    choices.loops = Get(profile, setting::previewLoop) != 0;
    choices.speed = std::clamp(Get(profile, setting::previewSpeed), speeds.front(), speeds.back());
    choices.followsCamera = Get(profile, setting::previewFollowsCamera) != 0;
    choices.fullSize = Get(profile, setting::previewFullSize) != 0;
    return choices;
}

void CPreviewChoices::Remember(CProfile& profile) const {
    Set(profile, setting::previewLoop, loops ? 1 : 0);
    Set(profile, setting::previewSpeed, speed);
    Set(profile, setting::previewFollowsCamera, followsCamera ? 1 : 0);
    Set(profile, setting::previewFullSize, fullSize ? 1 : 0);
}

int CPreviewChoices::Slower() const {
    const auto next = std::ranges::lower_bound(speeds, speed);
    return next == speeds.begin() ? speeds.front() : *(next - 1);
}

int CPreviewChoices::Faster() const {
    const auto next = std::ranges::upper_bound(speeds, speed);
    return next == speeds.end() ? speeds.back() : *next;
}

CPreviewRange RangeToPlay(const CXSheetSelection& selection, const std::optional<CPreviewRange>& set,
                          int frameCount) {
    const CPreviewRange whole{0, frameCount - 1};
    const CPreviewRange selected{std::clamp(selection.firstFrame, 0, whole.last),
                                 std::clamp(selection.lastFrame, 0, whole.last)};
    if (selected.Count() > 1 && selected != whole)
        return selected;
    if (set && set->first <= whole.last)
        return {std::max(set->first, 0), std::min(set->last, whole.last)};
    return whole;
}

int StartIn(CPreviewRange range, int cursorFrame) {
    return range.Holds(cursorFrame) && cursorFrame != range.last ? cursorFrame : range.first;
}

} // namespace velmor
