#pragma once

#include "scene/paper/Neighbours.h"

#include <optional>
#include <span>
#include <string>

namespace velmor {

/// The name of a new drawing that comes right after one of a folder: the next number when no drawing lies before
/// it, otherwise the number with the next free letter (7, 7a, 7b, 8). Nothing when there is no such name. `titles`
/// in the order of the list.
std::optional<std::string> NameAfter(const std::string& name, std::span<const std::string> titles);

/// Where a new drawing comes in the sheet.
struct CNewExposure {
    int level = 0;
    int frame = 0;
    int held = 1;       ///< frames
    int inserted = 0;   ///< empty frames that the level gets for it, since others stand there
    int frameCount = 0; ///< of the sheet that has room for all

    bool operator==(const CNewExposure&) const = default;
};

/// A drawing that follows `after` goes behind the hold in which that stands, or which the cursor is in; an empty
/// cell under the cursor gets it itself. What stands there moves on and nothing is lost, so the sheet may grow.
/// Nothing when it cannot. The cursor is in the sheet.
///
///     hold 2, cursor on A:  A A . . B  ->  A A X X B        A A B .  ->  A A X X B
std::optional<CNewExposure> ExposureAfter(const CXSheet& sheet, CSheetCell cursor, const CDrawing& after, int hold);
void Expose(CXSheet& sheet, const CNewExposure& exposure, const CXSheetCell& cell);

} // namespace velmor
