#pragma once

#include "platform/files/Files.h"
#include "xsheet/XSheetCell.h"

#include <string>

namespace velmor {

struct CSceneModel;

/// A cel or picture of the scene by its name.
struct CDrawing {
    std::string folder; ///< the pictures folder for a picture
    std::string name;   ///< title, empty for none

    bool IsEmpty() const { return name.empty(); }
    bool IsPicture() const { return folder == picturesFolder; }
    bool operator==(const CDrawing&) const = default;
};

/// The drawing that a cell shows; an empty one for an empty cell.
CDrawing DrawingOf(const CXSheetCell& cell);
/// The drawing under edit; an empty one when nothing of the scene is.
CDrawing EditedDrawing(const CSceneModel& model);
Path FileOf(const CSceneModel& model, const CDrawing& drawing);

} // namespace velmor
