#pragma once

#include "scene/SceneModel.h"

#include <string>

namespace velmor {

// The texts of a printed xsheet. Frames are 0-based.

/// What a cell does to its drawing, as short as the legend explains it: "T50 B3 S150/120 R45", nothing where the
/// drawing is shown as it is. Transparency and scale are percents, rotation degrees.
std::string CellMarks(const CXSheetCell& cell);
/// The marks as they stand under the cell above: nothing where a drawing is held with the same ones, "-" where it
/// is held without any more.
std::string ChangedMarks(const CXSheet& xsheet, int level, int frame);
/// The drawing that a cell holds on from an earlier page, for the page's first row; empty otherwise.
std::string HeldName(const CXSheet& xsheet, int level, int frame);

std::string PanText(const CCameraFrame& camera);
std::string ZoomText(const CCameraFrame& camera);
std::string RotationText(const CCameraFrame& camera);

/// "100 frames = 4 s + 0 fr".
std::string LengthText(int frames, int framesPerSecond);

inline constexpr const char* marksLegend =
    "\"  held as above      T  transparency %      B  blur      S  scale %      R  rotation in degrees"
    "      x/y  across/up      -  no more of these";

} // namespace velmor
