#pragma once

#include "xsheet/XSheet.h"

#include <string>
#include <vector>

namespace velmor::testing {

/// A level as a row of frames: a letter is a cel of that name in folder "F", a dot an empty cell.
using Rows = std::vector<std::string>;

/// The x position of every cell is its frame number, so that equal drawings can be told apart.
inline CXSheet SheetOf(const Rows& rows) {
    CXSheet xsheet(static_cast<int>(rows.size()), static_cast<int>(rows.front().size()));
    for (int level = 0; level < xsheet.LevelCount(); ++level)
        for (int frame = 0; frame < xsheet.FrameCount(); ++frame)
            if (const char letter = rows[static_cast<std::size_t>(level)][static_cast<std::size_t>(frame)];
                letter != '.')
                xsheet.MutableCell(level, frame) = CXSheetCell::FromFile(
                    "F", std::string(1, letter), {static_cast<double>(frame), 0, 1, 1, 0}, 0, 1, 1, {10, 10});
    return xsheet;
}

inline Rows RowsOf(const CXSheet& xsheet) {
    Rows rows(static_cast<std::size_t>(xsheet.LevelCount()));
    for (int level = 0; level < xsheet.LevelCount(); ++level)
        for (int frame = 0; frame < xsheet.FrameCount(); ++frame)
            rows[static_cast<std::size_t>(level)] +=
                xsheet.Cell(level, frame).IsUsed() ? xsheet.Cell(level, frame).CelName() : ".";
    return rows;
}

} // namespace velmor::testing
