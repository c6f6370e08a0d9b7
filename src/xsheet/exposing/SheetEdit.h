#pragma once

#include "xsheet/Scene.h"
#include "xsheet/exposing/FrameOrder.h"

namespace velmor {

enum class SheetEditKind {
    Expose,      ///< the drawing of the cell that is given, for `count` frames, placed like what it comes after
    Clear,       ///< empty cells for `count` frames
    HoldAbove,   ///< the cell above goes on for `count` frames; nothing at the first frame
    Repeat,      ///< the selected cells, until they fill `count` frames
    HoldOn,      ///< the last selected cells, until they fill `count` frames
    OnFrames,    ///< every selected exposure for `count` frames
    Swing,       ///< the selected cells there and back
    Random,      ///< the selected drawings in any order, by the seed
    Shift,       ///< the selected cells by `count` frames, up where it is below 0
    Roll,        ///< the same, round within the selection
    Stretch,     ///< the selected cells in `count` frames
    SetExposure, ///< the exposure at the first selected cell stands for `count` frames, at least 1
    InsertTime,  ///< `count` frames before the first selected one, on all levels, with camera and sounds
    DeleteTime   ///< `count` frames from the first selected one on, as long as one is left
};

/// What is to be done to the timing of a sheet.
struct CSheetEdit {
    SheetEditKind kind = SheetEditKind::Clear;
    CXSheetSelection cells; ///< in the sheet
    int count = 1;
    Following following = Following::Push; ///< of what gets longer or shorter, and of Shift; the first five eat
    unsigned seed = 0;
    CXSheetCell cell = {};
};

void Apply(const CSheetEdit& edit, CScene& scene);

/// Where the cells that were edited are afterwards, as far as there is room for them. To be asked before the sheet
/// is changed.
CXSheetSelection SelectedAfter(const CSheetEdit& edit, const CXSheet& xsheet);

} // namespace velmor
