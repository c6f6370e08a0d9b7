#pragma once

#include "platform/files/Profile.h"
#include "render/preview/PreviewPlayer.h"

#include <optional>

namespace velmor {

struct CXSheetSelection;

/// How the sheet is played; remembered.
struct CPreviewChoices {
    bool loops = true;
    int speed = 100;           ///< percent of the scene's rate, one of the steps below
    bool followsCamera = true; ///< or is seen from where the camera stands at the cursor
    bool fullSize = false;     ///< or as large as the camera view shows it

    static CPreviewChoices Remembered(const CProfile& profile);
    void Remember(CProfile& profile) const;
    /// The next slower or faster speed: 10, 25, 50, 75, 100, 150 and 200 percent. At the ends it stays.
    int Slower() const;
    int Faster() const;

    bool operator==(const CPreviewChoices&) const = default;
};

/// What is played: the selected frames if there are several, the set range if the selection is one frame or the
/// whole sheet, else the whole sheet. A set range that the sheet has outgrown is cut to it.
CPreviewRange RangeToPlay(const CXSheetSelection& selection, const std::optional<CPreviewRange>& set,
                          int frameCount);
/// Where playing begins: at the cursor, unless it is at the end of the range or outside.
int StartIn(CPreviewRange range, int cursorFrame);

} // namespace velmor
