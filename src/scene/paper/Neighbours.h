#pragma once

#include "scene/paper/Drawing.h"
#include "xsheet/SheetCell.h"
#include "xsheet/XSheet.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace velmor {

struct CSceneModel;

/// What tells which drawing comes before and after another.
enum class DrawingOrder {
    Sheet, ///< the exposures of the cursor's level
    Folder ///< the list of assets
};

/// A drawing beside another one.
struct CNeighbour {
    CDrawing drawing;
    int frame = -1; ///< the nearest at which the level shows it; -1 by the folder

    bool operator==(const CNeighbour&) const = default;
};

/// The nearest ones first.
struct CNeighbours {
    std::vector<CNeighbour> before;
    std::vector<CNeighbour> after;

    bool operator==(const CNeighbours&) const = default;
};

/// The frame of a level at which a drawing stands: that of its exposures that is nearest to the cursor, the later
/// one of two; the cursor's where there is none.
int StandingFrame(const CXSheet& sheet, CSheetCell cursor, const CDrawing& drawing);

/// The frames of a hold, the run of cells with the same asset, or of empty ones, around a frame.
struct CHold {
    int firstFrame = 0;
    int endFrame = 0;
};
CHold HoldAround(const CXSheet& sheet, CSheetCell cell);
/// The frames that are played around a cell: all used ones in a row; of an empty cell those that end before it, or
/// come next after it. Nothing in an empty level.
std::optional<CHold> RunAround(const CXSheet& sheet, CSheetCell cell);

/// Up to `most` different drawings each way from where `drawing` stands in the cursor's level; holds and what comes
/// again count once, empty cells not at all. A drawing that the level does not show stands behind what is exposed
/// at the cursor. The cursor is in the sheet.
CNeighbours NeighboursInLevel(const CXSheet& sheet, CSheetCell cursor, const CDrawing& drawing, int most);
/// The same by the order of a folder's titles; none for a drawing that is not among them.
CNeighbours NeighboursInFolder(std::span<const std::string> titles, const CDrawing& drawing, int most);
/// Those of the drawing under edit. A level that shows nothing has no order: then the folder's counts as well.
CNeighbours NeighboursOfEdited(const CSceneModel& model, DrawingOrder order, int most);

} // namespace velmor
