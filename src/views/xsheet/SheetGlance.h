#pragma once

#include "views/xsheet/XSheetLook.h"

#include <functional>

namespace velmor {

/// What cells show besides their names.
struct CSheetGlance {
    bool colorsFolders = false;
    bool drawsHolds = false;
    /// The picture of a cell's drawing, null for none; empty where rows are too low for pictures.
    std::function<QPixmap(const CXSheetCell& cell)> picture;
};

/// Adds it to a look at a scene; what is not chosen adds nothing.
void AddGlance(CXSheetLook& look, const CScene& shown, const CSheetGlance& glance);

/// The hue of a folder, 0 to 359, always the same for a name.
int HueOf(const std::string& folder);

} // namespace velmor
